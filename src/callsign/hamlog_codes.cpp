#include "callsign/hamlog_codes.h"

#include <array>
#include <cstdio>

#include "text/error.h"
#include "text/input_file.h"
#include "text/strings.h"
#include "text/utf8.h"

namespace tobarine {
namespace {

std::string column(std::string_view line, std::size_t from, std::size_t to) {
  return std::string(trim(mid_chars(line, from - 1, to - from + 1)));
}

// A text filled up with blanks to so many characters.
std::string padded(std::string_view text, std::size_t width) {
  std::string result(left_chars(text, width));
  result.append(width - char_count(result), ' ');
  return result;
}

std::string number_column(unsigned dxcc) {
  if (dxcc == 0) return "   ";
  std::array<char, 16> digits{};
  static_cast<void>(std::snprintf(digits.data(), digits.size(), "%03u", dxcc));
  return digits.data();
}

void end_line(std::string& text) {
  text.erase(text.find_last_not_of(' ') + 1);
  text += '\n';
}

}  // namespace

void HamlogToDxcc::load(const std::filesystem::path& path) {
  HamlogToDxcc loaded;
  std::size_t line_number = 0;
  for (const std::string& line : read_table_lines(path)) {
    ++line_number;
    if (is_blank(line)) continue;
    CodeRow row{column(line, 1, 5), dxcc_number(column(line, 7, 9)), column(line, 11, 23),
                column(line, 25, 50)};
    if (!row.code.empty() && row.dxcc == 0) {
      throw RecordError(path, line_number, "Code " + row.code + " に DXCC 番号がありません");
    }
    if (!row.code.empty()) loaded.numbers_.emplace(upper(row.code), std::to_string(row.dxcc));
    loaded.rows_.push_back(std::move(row));
  }
  *this = std::move(loaded);
}

std::string_view HamlogToDxcc::find(std::string_view code) const {
  const auto found = numbers_.find(upper(trim(code)));
  return found == numbers_.end() ? std::string_view("0") : std::string_view(found->second);
}

void DxccToHamlog::load(const std::filesystem::path& path) {
  std::vector<CodeRow> rows;
  for (const std::string& line : read_table_lines(path)) {
    if (rows.size() == kRows) {
      throw RecordError(path, rows.size() + 1,
                        "l2h_cty.mas は " + std::to_string(kRows) + " 行までです");
    }
    rows.push_back({column(line, 19, 23), dxcc_number(column(line, 1, 3)), column(line, 5, 17),
                    column(line, 25, 50)});
  }
  rows_ = std::move(rows);
  index_.assign(kLargestDxcc + 1, -1);
  for (std::size_t i = rows_.size(); i-- > 0;) {
    index_[rows_[i].dxcc] = static_cast<std::int16_t>(i);
  }
}

const CodeRow* DxccToHamlog::find(unsigned dxcc) const {
  if (dxcc == 0 || dxcc >= index_.size() || index_[dxcc] < 0) return nullptr;
  return &rows_[static_cast<std::size_t>(index_[dxcc])];
}

std::string h2l_file_text(const std::vector<CodeRow>& rows) {
  std::string text;
  for (const CodeRow& row : rows) {
    text += padded(row.code, 5) + ' ' + number_column(row.dxcc) + ' ' + padded(row.prefix, 13) +
            ' ' + std::string(left_chars(row.text, 26));
    end_line(text);
  }
  return text;
}

std::string l2h_file_text(const std::vector<CodeRow>& rows) {
  std::string text;
  for (const CodeRow& row : rows) {
    text += number_column(row.dxcc) + ' ' + padded(row.prefix, 13) + ' ' + padded(row.code, 5) +
            ' ' + std::string(left_chars(row.text, 26));
    end_line(text);
  }
  return text;
}

}  // namespace tobarine
