#include "hamlog/hamlog_csv.h"

#include <algorithm>

#include "text/cp932.h"
#include "text/encoding_guess.h"
#include "text/error.h"
#include "text/strings.h"
#include "text/utf8.h"

namespace tobarine {
namespace {

// The beginning of a line, fit for a message.
std::string beginning(std::string_view line) {
  constexpr std::size_t kShown = 40;
  std::string text(left_chars(line, kShown));
  for (char& c : text) {
    if (static_cast<unsigned char>(c) < ' ') c = ' ';
  }
  return text + (text.size() < line.size() ? "..." : "");
}

void check_columns(const std::filesystem::path& path, std::size_t line,
                   std::span<const std::string_view> columns) {
  if (columns.size() >= kHamlogColumns) return;
  std::string text;
  for (const std::string_view column : columns) text.append(text.empty() ? "" : ",").append(column);
  throw RecordError(path, line,
                    "欄が足りません (" + std::to_string(columns.size()) + " 個、必要なのは " +
                        std::to_string(kHamlogColumns) + " 個)。ここで変換を中止しました: 「" +
                        beginning(text) + "」");
}

void report_invalid_bytes(std::size_t count, std::size_t line, std::string_view call,
                          FindingLog& findings) {
  if (count == 0) return;
  findings.add(FindingKind::kInvalidByte, line, call, std::to_string(count) + " バイト");
}

// The columns as HamlogLineReader sees them, each handed to `visit`.
template <typename Visit>
void for_each_column(std::string line, Visit visit) {
  replace_all(line, "\"", "");
  for_each_piece(line, ',', visit);
}

// Calls `visit` with the call of each contact in a line that CR alone may divide: one begins behind
// a CR once the one before has all its columns.
template <typename Visit>
void for_each_contact(std::string_view line, Visit visit) {
  std::size_t commas = 0;
  std::string_view begin;
  for_each_piece(line, '\r', [&](std::string_view piece) {
    if (commas == 0) begin = piece;
    commas += static_cast<std::size_t>(std::ranges::count(piece, ','));
    if (commas + 1 < kHamlogColumns) return;
    commas = 0;
    std::string call = from_cp932(begin.substr(0, begin.find(',')));
    replace_all(call, "\"", "");
    visit(call);
  });
}

// As for_each_contact(), without the contact that the line begins with.
template <typename Visit>
void for_each_contact_behind_cr(std::string_view line, Visit visit) {
  if (!contains(line, "\r")) return;
  bool first = true;
  for_each_contact(line, [&](const std::string& call) {
    if (!first) visit(call);
    first = false;
  });
}

void report_contacts_behind_cr(std::string_view line, std::size_t number, FindingLog& findings) {
  for_each_contact_behind_cr(line, [&](const std::string& call) {
    findings.add(FindingKind::kBehindCr, number, call, "");
  });
}

std::string_view without_line_end(std::string_view line) {
  if (line.ends_with('\n')) line.remove_suffix(1);
  if (line.ends_with('\r')) line.remove_suffix(1);
  return line;
}

// What spreadsheets make of yy/mm/dd: 2024/5/1, 2024-05-01, 5/1/2024, 1-May-24, 2024年5月1日.
bool is_respelled_date(std::string_view date) {
  const bool letters = contains(date, "-") || contains(date, "年");
  std::size_t longest = 0;
  std::size_t digits = 0;
  for (const char c : date) {
    digits = is_digit(c) ? digits + 1 : 0;
    longest = std::max(longest, digits);
  }
  return longest > 0 && longest <= 4 && (letters || (longest == 4 && contains(date, "/")));
}

HamlogLayout layout_of(std::string_view date) {
  if (is_respelled_date(date)) return HamlogLayout::kRespelled;
  if (!is_blank(date) && std::ranges::none_of(date, is_digit)) return HamlogLayout::kHeadings;
  return contains(date, "/") ? HamlogLayout::kNew : HamlogLayout::kOld;
}

struct LayoutText {
  HamlogLayout layout;
  std::string_view name;
  std::string_view problem;
};

constexpr LayoutText kLayouts[] = {
    {HamlogLayout::kNew, "新", ""},
    {HamlogLayout::kOld, "旧", "ﾌｧｲﾙ形式が [ 旧 ] なので不適切です。"},
    {HamlogLayout::kHeadings, "見出しあり",
     "１行目が見出しなので変換できません。Excel などで保存し直した CSV のようです。"
     "Hamlog から CSV を出力し直し、Excel で保存せずにそのまま使って下さい"},
    {HamlogLayout::kRespelled, "表計算",
     "日付が Hamlog の形 (24/05/01) ではないので変換できません。Excel などで保存し直した CSV "
     "のようです (Code の先頭の 0 も失われます)。"
     "Hamlog から CSV を出力し直し、Excel で保存せずにそのまま使って下さい"},
    {HamlogLayout::kCrOnly, "CR だけの改行",
     "改行が CR だけなので、交信を読めません (改行を CR LF にして保存し直して下さい)"},
    {HamlogLayout::kEmpty, "空", ""},
};

const LayoutText& text_of(HamlogLayout layout) {
  return *std::ranges::find(kLayouts, layout, &LayoutText::layout);
}

// Whether a comma inside a column's quotes, as HamlogRowReader reads them, splits a column in use.
bool columns_shift(std::string_view line) {
  std::size_t column = 0;
  bool quoted = false;
  bool at_start = true;
  for (std::size_t i = 0; i < line.size() && column + 1 < kHamlogColumns; ++i) {
    const char c = line[i];
    if (quoted) {
      if (c == ',') return true;
      const bool doubled = c == '"' && i + 1 < line.size() && line[i + 1] == '"';
      if (doubled) {
        ++i;
      } else if (c == '"') {
        quoted = false;
      }
    } else if (c == ',') {
      ++column;
    } else {
      quoted = c == '"' && at_start;
    }
    at_start = c == ',' && !quoted;
  }
  return false;
}

}  // namespace

std::string_view layout_name(HamlogLayout layout) {
  return text_of(layout).name;
}

std::string_view layout_problem(HamlogLayout layout) {
  return text_of(layout).problem;
}

HamlogCsvInfo look_at_hamlog_csv(const std::filesystem::path& path) {
  LineReader lines(path);
  HamlogCsvInfo info;
  std::string_view line;
  if (!lines.next(line)) return info;
  refuse_utf16(path, line);
  EncodingGuess encoding;
  encoding.see(line);
  std::string first(line.starts_with(kUtf8Mark) ? line.substr(kUtf8Mark.size()) : line);
  while (!encoding.settled() && lines.next(line)) encoding.see(line);
  info.utf8 = encoding.utf8();
  info.maybe_utf8 = encoding.maybe_utf8();
  bool cr_only = false;
  for_each_contact_behind_cr(first, [&](const std::string&) { cr_only = true; });
  if (!info.utf8) first = from_cp932(first);
  std::string date;
  std::size_t columns = 0;
  for_each_column(first, [&](std::string_view column) {
    if (++columns == 2) date = column;
  });
  if (columns == 1) {
    throw RecordError(
        path, 1,
        "コンマがありません。Hamlog の CSV ではないようです: 「" + beginning(first) + "」");
  }
  info.layout = cr_only ? HamlogLayout::kCrOnly : layout_of(date);
  return info;
}

HamlogCsvInfo check_hamlog_csv(const std::filesystem::path& path) {
  const HamlogCsvInfo info = look_at_hamlog_csv(path);
  const std::string_view problem = layout_problem(info.layout);
  if (!problem.empty()) throw FileError(path, problem);
  return info;
}

std::size_t count_hamlog_lines(const std::filesystem::path& path) {
  LineReader lines(path);
  std::string_view line;
  std::size_t last = 0;
  while (lines.next(line)) {
    if (!is_blank(line)) last = lines.line();
  }
  return last;
}

HamlogLineReader::HamlogLineReader(const std::filesystem::path& path, bool utf8)
    : lines_(path), utf8_(utf8) {
  if (utf8_) lines_.skip_utf8_mark();
}

// Decodes the line, takes its quotes out and splits it, in one pass.
HamlogLineReader::Split HamlogLineReader::split(std::string_view line) {
  if (text_.size() < line.size() * kUtf8PerByte + 1) text_.resize(line.size() * kUtf8PerByte + 1);
  Split result;
  bool quoted = false;
  char* out = text_.data();
  const char* column = out;
  const char* const begin = line.data();
  const char* const end = begin + line.size();
  const auto end_column = [&] {
    columns_[result.columns++] = {column, static_cast<std::size_t>(out - column)};
    column = out;
  };
  for (const char* at = begin; at < end;) {
    const char c = *at;
    if (static_cast<unsigned char>(c) >= 0x80) {
      const char* next = at;  // copies, so that the loop's own pointers stay in registers
      char* next_out = out;
      const bool valid =
          utf8_ ? copy_utf8_char(next, end, next_out) : decode_cp932_char(next, end, next_out);
      if (!valid) ++result.invalid_bytes;
      at = next;
      out = next_out;
      continue;
    }
    ++at;
    if (c == '"') {
      const bool encloses = at - 1 == begin || at[-2] == ',' || at == end || *at == ',';
      if (!encloses) ++result.inner_quotes;
      quoted = !quoted;
    } else if (c == ',') {
      result.comma_in_quotes = result.comma_in_quotes || quoted;
      end_column();
      if (result.columns == kHamlogColumns) return result;
    } else {
      *out++ = c;
    }
  }
  end_column();
  return result;
}

bool HamlogLineReader::next(QsoRecord& record, FindingLog& findings) {
  std::string_view line;
  if (!lines_.next(line)) return false;
  const std::size_t number = lines_.line();
  const Split result = split(line);
  if (result.columns == 1 && is_blank(columns_[0])) {
    do {
      if (!lines_.next(line)) return false;
    } while (is_blank(line));
  }
  check_columns(lines_.file().path(), number, std::span(columns_).first(result.columns));
  fill_record(columns_, record);
  report_contacts_behind_cr(line, number, findings);
  report_invalid_bytes(result.invalid_bytes, number, record.call, findings);
  if (result.comma_in_quotes && columns_shift(line)) {
    findings.add(FindingKind::kSplitByComma, number, record.call, "");
  }
  if (result.inner_quotes > 0) {
    findings.add(FindingKind::kQuoteDropped, number, record.call,
                 std::to_string(result.inner_quotes) + " 個");
  }
  return true;
}

// The next row that is not one of the blank lines at the very end.
bool HamlogRowReader::next_row() {
  const auto is_blank_row = [this] { return columns_.size() == 1 && is_blank(columns_[0]); };
  if (!rows_.next(columns_)) return false;
  if (!is_blank_row()) return true;
  const std::size_t first = rows_.line();
  do {
    if (!rows_.next(columns_)) return false;
  } while (is_blank_row());
  constexpr std::string_view kBlank;
  check_columns(rows_.file().path(), first, std::span(&kBlank, 1));
  return true;
}

// The row's own contact is the first of its first line.
void HamlogRowReader::report_lines_in_quotes(FindingLog& findings) const {
  const std::string first = std::to_string(rows_.line());
  std::size_t line = rows_.line();
  std::size_t contacts = 0;
  for_each_piece(without_line_end(rows_.bytes()), '\n', [&](std::string_view bytes) {
    if (line == rows_.line()) {
      report_contacts_behind_cr(bytes, line, findings);
    } else {
      for_each_contact(bytes, [&](const std::string& call) {
        ++contacts;
        findings.add(FindingKind::kInsideQuotes, line, call, first + " 行目の引用符の中");
      });
    }
    ++line;
  });
  const auto kind =
      rows_.unclosed_quote() ? FindingKind::kUnclosedQuote : FindingKind::kQuoteSpansLines;
  findings.add(kind, rows_.line(), columns_.front(),
               std::to_string(rows_.last_line()) + " 行目まで (その中の交信 " +
                   std::to_string(contacts) + " 件)");
}

bool HamlogRowReader::next(QsoRecord& record, FindingLog& findings) {
  if (!next_row()) return false;
  if (rows_.unclosed_quote() || rows_.spans_lines()) {
    report_lines_in_quotes(findings);
  } else {
    report_contacts_behind_cr(without_line_end(rows_.bytes()), rows_.line(), findings);
  }
  check_columns(rows_.file().path(), rows_.line(), columns_);
  fill_record(columns_, record);
  report_invalid_bytes(rows_.invalid_bytes(), rows_.line(), record.call, findings);
  return true;
}

}  // namespace tobarine
