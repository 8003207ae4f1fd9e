#include "zlog/all_reader.h"

#include "text/cp932.h"
#include "text/error.h"
#include "text/strings.h"
#include "text/utf8.h"

namespace tobarine {
namespace {

// Columns of the memo.
constexpr std::size_t kMemo = 80;
constexpr std::size_t kMemoEnd = 99;

// "(7012.3)" of a text: its first parentheses, if a frequency stands in them; "(0)" is none.
std::string_view freq_in(std::string_view text) {
  const std::size_t open = text.find('(');
  if (open == std::string_view::npos || open + 1 == text.size() || !is_digit(text[open + 1])) {
    return {};
  }
  const std::string_view found = text.substr(open, text.find(')', open) - open + 1);
  return found == "(0)" ? std::string_view() : found;
}

// A line cut into columns.
class Columns {
 public:
  explicit Columns(std::string_view line) : line_(line), ascii_(ascii_prefix(line)) {}

  // `width` characters from the column `first` (from 1) on, fewer at the line's end.
  std::string_view operator()(std::size_t first, std::size_t width) const {
    const std::size_t start = first - 1;
    if (start + width <= ascii_) return line_.substr(start, width);
    if (ascii_ < line_.size()) return mid_chars(line_, start, width);
    return start < line_.size() ? line_.substr(start, width) : std::string_view();
  }

 private:
  std::string_view line_;
  std::size_t ascii_;  // as many columns are single bytes
};

}  // namespace

TextLogForm text_log_form(std::string_view first_line) {
  if (contains(first_line, "zLog for Windows")) return TextLogForm::kZlogAll;
  if (contains(first_line, "mon day time  callsign")) return TextLogForm::kZlogTxt;
  return TextLogForm::kOther;
}

void refuse_foreign_all(const std::filesystem::path& path) {
  LineReader lines(path);
  std::string_view line;
  const bool any = lines.next(line);
  if (any && text_log_form(line) == TextLogForm::kZlogAll) {
    if (!contains(line, "\r")) return;
    throw FileError(path,
                    "改行が CR だけなので、交信を読めません"
                    " (改行を CR LF にして保存し直して下さい)");
  }
  throw FileError(path, any ? "zLog の .ALL ではありません (1 行目に「zLog for Windows」が無い)"
                            : "空のファイルです");
}

std::size_t count_all_contacts(const std::filesystem::path& path) {
  const std::size_t lines = count_lines(path);
  return lines == 0 ? 0 : lines - 1;
}

AllReader::AllReader(const std::filesystem::path& path) : lines_(path) {
  std::string_view header;
  lines_.next(header);
}

bool AllReader::next(ZlogContact& contact, FindingLog& findings) {
  std::string_view line;
  if (!lines_.next(line)) return false;
  text_.clear();
  const std::size_t invalid_bytes = decode_cp932(line, text_);
  const Columns columns(text_);
  contact.date = columns(1, 10);
  contact.time = trim(columns(12, 5));
  contact.call = trim(columns(18, 11));
  contact.his_rst = trim(columns(31, 3));
  contact.my_rst = trim(columns(43, 3));
  contact.band = trim(columns(67, 5));
  contact.mode = trim(columns(72, 3));
  contact.memo = trim(columns(kMemo, kMemoEnd + 1 - kMemo));
  contact.oddity.clear();
  if (const std::string_view behind = trim(columns(29, 2)); !behind.empty()) {
    contact.oddity.assign("コールの欄の後に「").append(behind).append("」");
  }
  if (contains(line, "\r")) {
    contact.oddity.append(contact.oddity.empty() ? "" : "、").append("行の中に改行 (CR)");
  }
  if (contact.memo.find('(') == std::string::npos) {
    const std::string_view freq = freq_in(columns(kMemoEnd + 1, text_.size()));
    if (!freq.empty()) findings.add(FindingKind::kFreqNotRead, number(), contact.call, freq);
  }
  if (invalid_bytes > 0) {
    findings.add(FindingKind::kInvalidByte, number(), contact.call,
                 std::to_string(invalid_bytes) + " バイト");
  }
  return true;
}

}  // namespace tobarine
