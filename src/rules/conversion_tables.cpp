#include "rules/conversion_tables.h"

#include <algorithm>
#include <initializer_list>
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
  explicit FieldStream(const std::filesystem::path& path) {
    std::string bytes = read_whole_file(path);
    if (!bytes.empty() && bytes.back() == '\x1A') bytes.pop_back();
    decode_cp932(bytes, text_);
  }

  bool at_end() const { return at_ >= text_.size(); }

  std::string next() {
    at_ = std::min(text_.find_first_not_of(' ', at_), text_.size());
    std::string field;
    if (at_ < text_.size() && text_[at_] == '"') {
      const std::size_t close = std::min(text_.find('"', at_ + 1), text_.size());
      field = text_.substr(at_ + 1, close - at_ - 1);
      at_ = std::min(text_.find_first_of(",\n", close), text_.size());
    } else {
      const std::size_t end = std::min(text_.find_first_of(",\n", at_), text_.size());
      std::string_view value(text_.data() + at_, end - at_);
      if (!value.empty() && value.back() == '\r') value.remove_suffix(1);
      field = trim(value);
      at_ = end;
    }
    ++at_;  // the separator
    return field;
  }

 private:
  std::string text_;
  std::size_t at_ = 0;
};

// Reads rows of Fields texts until the end of the file or a row whose first field is blank, and
// hands each to `take` with its index.
template <std::size_t Fields, typename Take>
std::size_t load_rows(const std::filesystem::path& path, std::size_t limit, Take take) {
  FieldStream stream(path);
  std::size_t rows = 0;
  while (!stream.at_end()) {
    std::array<std::string, Fields> fields;
    fields[0] = stream.next();
    if (is_blank(fields[0])) break;
    if (rows == limit) {
      throw RecordError(path, rows + 1, "変換テーブルは " + std::to_string(limit) + " 行までです");
    }
    for (std::size_t i = 1; i < Fields; ++i) {
      if (stream.at_end()) {
        throw RecordError(path, rows + 1,
                          "変換テーブルの欄が足りません (" + std::to_string(i) +
                              " 個、必要なのは " + std::to_string(Fields) + " 個)");
      }
      fields[i] = stream.next();
    }
    take(rows, fields);
    ++rows;
  }
  return rows;
}

// One line of quoted texts. The form has no escape: a double quote inside a text is left out.
void append_row(std::string& text, std::initializer_list<std::string_view> fields) {
  bool first = true;
  for (const std::string_view field : fields) {
    text += first ? "\"" : ",\"";
    for (const char c : field) {
      if (c != '"') text += c;
    }
    text += '"';
    first = false;
  }
  text += '\n';
}

}  // namespace

void BandTable::load(const std::filesystem::path& path) {
  std::array<BandRow, kRows> rows;
  size_ = load_rows<5>(path, kRows, [&rows](std::size_t row, std::array<std::string, 5>& f) {
    rows[row] = {f[1], f[2], f[3], f[4]};
  });
  rows_ = std::move(rows);
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
  std::array<ModeRow, kRows> rows;
  size_ = load_rows<3>(path, kRows, [&rows](std::size_t row, std::array<std::string, 3>& f) {
    rows[row] = {f[1], f[2]};
  });
  rows_ = std::move(rows);
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

void save_band_table(const std::filesystem::path& path, std::span<const BandRow> rows) {
  std::string text;
  for (std::size_t i = 0; i < rows.size() && i < BandTable::kSaved; ++i) {
    const BandRow& row = rows[i];
    if (is_blank(row.adif)) break;
    append_row(text, {std::to_string(i + 1), row.adif, row.freq, row.memo, row.placement});
  }
  replace_text_file(path, text);
}

void save_mode_table(const std::filesystem::path& path, std::span<const ModeRow> rows) {
  std::string text;
  for (std::size_t i = 0; i < rows.size() && i < ModeTable::kSaved; ++i) {
    if (is_blank(rows[i].adif)) break;
    append_row(text, {std::to_string(i + 1), rows[i].adif, rows[i].csv});
  }
  replace_text_file(path, text);
}

}  // namespace tobarine
