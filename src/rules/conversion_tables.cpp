#include "rules/conversion_tables.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "text/cp932.h"
#include "text/error.h"
#include "text/input_file.h"
#include "text/output_file.h"
#include "text/strings.h"

namespace tobarine {
namespace {

// A file as a stream of fields separated by commas or line ends. A quoted field keeps its content;
// an unquoted one loses its surrounding blanks.
class FieldStream {
 public:
  explicit FieldStream(const std::filesystem::path& path) : path_(path) {
    std::string bytes = read_whole_file(path);
    if (!bytes.empty() && bytes.back() == '\x1A') bytes.pop_back();
    decode_cp932(bytes, text_);
  }

  bool at_end() const { return at_ >= text_.size(); }
  bool at_line_start() const { return at_end() || text_[at_ - 1] == '\n'; }

  // The next field, of this row (from 1); throws RecordError.
  std::string next(std::size_t row) {
    at_ = std::min(text_.find_first_not_of(' ', at_), text_.size());
    const bool quoted = at_ < text_.size() && text_[at_] == '"';
    const std::size_t begin = at_ + (quoted ? 1 : 0);
    const std::size_t close = quoted ? find('"', begin) : begin;
    const std::size_t end = std::min(text_.find_first_of(",\n", close), text_.size());
    std::string_view value(text_.data() + begin, (quoted ? close : end) - begin);
    std::string_view behind(text_.data() + close, quoted ? end - close : 0);
    if (quoted && behind.empty()) fail(row, "引用符 (\") で閉じていない欄があります");
    std::string_view& last = quoted ? behind : value;
    if (last.ends_with('\r') && end < text_.size() && text_[end] == '\n') last.remove_suffix(1);
    if (value.find_first_of("\r\n") != std::string_view::npos) {
      fail(row, "引用符 (\") で閉じていないか、途中に改行のある欄があります");
    }
    if (quoted && !is_blank(behind.substr(1))) {
      fail(row, "引用符 (\") の後に余分な文字があります: " + std::string(value));
    }
    at_ = end + 1;  // behind the separator
    return std::string(quoted ? value : trim(value));
  }

  [[noreturn]] void fail(std::size_t row, const std::string& reason) const {
    throw RecordError(path_, row, "変換テーブルの行として読めません: " + reason);
  }

 private:
  std::size_t find(char c, std::size_t from) const {
    return std::min(text_.find(c, from), text_.size());
  }

  const std::filesystem::path path_;
  std::string text_;
  std::size_t at_ = 0;
};

// One line of quoted texts. The form has no escape: a double quote inside a text is left out.
void append_row(std::string& text, std::size_t number, const TableRow& row) {
  text += '"' + std::to_string(number) + '"';
  for (const std::string& field : row) {
    text += ",\"";
    std::ranges::remove_copy(field, std::back_inserter(text), '"');
    text += '"';
  }
  text += '\n';
}

}  // namespace

std::vector<TableRow> read_table(const std::filesystem::path& path, std::size_t columns,
                                 std::size_t most) {
  FieldStream stream(path);
  std::vector<TableRow> rows;
  while (!stream.at_end()) {
    const std::size_t number = rows.size() + 1;
    if (is_blank(stream.next(number))) break;
    if (rows.size() == most) stream.fail(number, std::to_string(most) + " 行までです");
    TableRow row;
    while (row.size() < columns && !stream.at_end()) row.push_back(stream.next(number));
    if (row.size() < columns || !stream.at_line_start()) {
      stream.fail(number, "欄の数が違います (一行に " + std::to_string(columns + 1) + " 個です)");
    }
    rows.push_back(std::move(row));
  }
  return rows;
}

void save_table(const std::filesystem::path& path, std::span<const TableRow> rows, std::size_t most,
                const KeepRule& rule) {
  std::string text;
  for (std::size_t i = 0; i < rows.size() && i < most && !is_blank(rows[i][0]); ++i) {
    append_row(text, i + 1, rows[i]);
  }
  replace_text_file(path, text, rule);
}

void BandTable::load(const std::filesystem::path& path) {
  const std::vector<TableRow> rows = read_table(path, kColumns, kRows);
  rows_ = {};
  size_ = rows.size();
  for (std::size_t i = 0; i < size_; ++i)
    rows_[i] = {rows[i][0], rows[i][1], rows[i][2], rows[i][3]};
  for (std::size_t i = 0; i < kRows; ++i) {
    upper_[i].adif = upper(rows_[i].adif);
    upper_[i].freq = upper(rows_[i].freq);
  }
}

const BandRow* BandTable::find(std::string_view text, std::string BandRow::*key) const {
  for (std::size_t i = 0; i < kCompared; ++i) {
    if (upper_[i].*key == text) return &rows_[i];
  }
  return nullptr;
}

const BandRow* BandTable::find_adif(std::string_view upper_band) const {
  return find(upper_band, &BandRow::adif);
}

const BandRow* BandTable::find_freq(std::string_view freq) const {
  return find(freq, &BandRow::freq);
}

void ModeTable::load(const std::filesystem::path& path) {
  const std::vector<TableRow> rows = read_table(path, kColumns, kRows);
  rows_ = {};
  size_ = rows.size();
  for (std::size_t i = 0; i < size_; ++i) rows_[i] = {rows[i][0], rows[i][1]};
  for (std::size_t i = 0; i < kRows; ++i) upper_[i] = {upper(rows_[i].adif), upper(rows_[i].csv)};
}

bool ModeTable::replace(std::string& mode, std::string ModeRow::*from,
                        std::string ModeRow::*to) const {
  bool matched = false;
  std::string current = upper(trim(mode));
  for (std::size_t i = 0; i < kCompared; ++i) {
    if (current != upper_[i].*from) continue;
    mode = rows_[i].*to;
    current = upper(trim(mode));
    matched = true;
  }
  return matched;
}

}  // namespace tobarine
