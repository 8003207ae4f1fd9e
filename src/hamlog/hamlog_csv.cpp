#include "hamlog/hamlog_csv.h"

#include "text/cp932.h"
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
                   const std::vector<std::string_view>& columns) {
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

}  // namespace

HamlogLayout hamlog_layout(const std::filesystem::path& path) {
  LineReader lines(path);
  std::string_view line;
  if (!lines.next(line)) return HamlogLayout::kEmpty;
  std::string text = from_cp932(line);
  replace_all(text, "\"", "");
  const std::size_t comma = text.find(',');
  if (comma == std::string::npos) {
    throw RecordError(
        path, 1, "コンマがありません。Hamlog の CSV ではないようです: 「" + beginning(text) + "」");
  }
  const std::string_view rest = std::string_view(text).substr(comma + 1);
  return contains(rest.substr(0, rest.find(',')), "/") ? HamlogLayout::kNew : HamlogLayout::kOld;
}

void refuse_old_layout(const std::filesystem::path& path) {
  if (hamlog_layout(path) == HamlogLayout::kOld) {
    throw FileError(path, "ﾌｧｲﾙ形式が [ 旧 ] なので不適切です。");
  }
}

// Decodes the line, takes its quotes out and splits it, in one pass.
HamlogLineReader::Split HamlogLineReader::split(std::string_view line) {
  if (text_.size() < line.size() * kUtf8PerByte + 1) text_.resize(line.size() * kUtf8PerByte + 1);
  if (ends_.size() < line.size() + 1) ends_.resize(line.size() + 1);
  Split result;
  bool quoted = false;
  bool inside_quotes = false;
  std::size_t commas = 0;
  char* out = text_.data();
  const char** const ends = ends_.data();
  const char* const end = line.data() + line.size();
  for (const char* at = line.data(); at < end;) {
    const char c = *at;
    if (static_cast<unsigned char>(c) >= 0x80) {
      const char* next = at;  // copies, so that the loop's own pointers stay in registers
      char* next_out = out;
      if (!decode_cp932_char(next, end, next_out)) ++result.invalid_bytes;
      at = next;
      out = next_out;
      continue;
    }
    ++at;
    if (c == '"') {
      quoted = !quoted;
    } else if (c == ',') {
      ends[commas++] = out;
      inside_quotes = inside_quotes || quoted;
    } else {
      *out++ = c;
    }
  }
  ends[commas] = out;
  result.inside_quotes = inside_quotes;
  columns_.clear();
  const char* column = text_.data();
  for (std::size_t i = 0; i <= commas; ++i) {
    columns_.emplace_back(column, ends[i] - column);
    column = ends[i];
  }
  return result;
}

bool HamlogLineReader::next(QsoRecord& record, FindingLog& findings) {
  std::string_view line;
  if (!lines_.next(line)) return false;
  const Split result = split(line);
  check_columns(lines_.file().path(), lines_.line(), columns_);
  fill_record(columns_, record);
  report_invalid_bytes(result.invalid_bytes, lines_.line(), record.call, findings);
  if (result.inside_quotes) {
    findings.add(FindingKind::kSplitByComma, lines_.line(), record.call, "");
  }
  return true;
}

bool HamlogRowReader::next(QsoRecord& record, FindingLog& findings) {
  if (!rows_.next(columns_)) return false;
  check_columns(rows_.file().path(), rows_.line(), columns_);
  fill_record(columns_, record);
  report_invalid_bytes(rows_.invalid_bytes(), rows_.line(), record.call, findings);
  if (rows_.unclosed_quote()) {
    findings.add(FindingKind::kUnclosedQuote, rows_.line(), record.call,
                 std::to_string(rows_.last_line()) + " 行目まで");
  }
  return true;
}

}  // namespace tobarine
