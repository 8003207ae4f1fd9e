#include "app/table_file.h"

#include <algorithm>
#include <utility>

#include "text/error.h"
#include "text/folder.h"
#include "text/strings.h"

namespace tobarine {
namespace {

bool is_blank_row(const TableRow& row) {
  return std::ranges::all_of(row, [](const std::string& text) { return is_blank(text); });
}

std::vector<TableRow> rows_of(const GridEditor& grid) {
  std::vector<TableRow> rows(grid.rows() - 1);
  for (std::size_t row = 0; row < rows.size(); ++row) {
    for (std::size_t column = 1; column < grid.columns(); ++column) {
      rows[row].push_back(grid.cell(row + 1, column));
    }
  }
  return rows;
}

// Where the row that stood at `row` is now: there, or where others have moved it. A row of which
// nothing is left goes into the first free one.
std::size_t place_now(std::vector<TableRow>& rows, std::size_t row, const TableRow& before) {
  if (row < rows.size() && rows[row] == before) return row;
  const auto same = std::ranges::find(rows, before);
  if (same != rows.end() && !is_blank_row(before)) {
    return static_cast<std::size_t>(same - rows.begin());
  }
  const bool changed = row < rows.size() && !is_blank(before[0]) &&
                       equal_ignoring_case(trim(rows[row][0]), trim(before[0]));
  if (changed) return row;
  const auto free = std::ranges::find_if(rows, is_blank_row);
  if (free != rows.end()) return static_cast<std::size_t>(free - rows.begin());
  rows.emplace_back(before.size());
  return rows.size() - 1;
}

}  // namespace

void TableFile::fill(const std::filesystem::path& folder, GridEditor& grid) {
  path_ = file_in(folder, name_);
  file_ = read_table(path_, grid.columns() - 1, most_);
  for (std::size_t row = 0; row < std::min(file_.size(), grid.rows() - 1); ++row) {
    for (std::size_t column = 1; column < grid.columns(); ++column) {
      grid.set_cell(row + 1, column, file_[row][column - 1]);
    }
  }
  shown_ = rows_of(grid);
}

std::string TableFile::save(const GridEditor& grid, KeepRule rule) {
  const std::vector<TableRow> wanted = rows_of(grid);
  if (wanted == shown_) return {};
  std::vector<TableRow> rows = read_table(path_, grid.columns() - 1, most_);
  const bool changed_by_others = rows != file_;
  rows.resize(std::max(rows.size(), wanted.size()), TableRow(grid.columns() - 1));
  std::string edits;
  for (std::size_t row = 0; row < wanted.size(); ++row) {
    if (wanted[row] == shown_[row]) continue;
    TableRow& now = rows[place_now(rows, row, shown_[row])];
    const bool is_new = is_blank_row(now);
    for (std::size_t column = 0; column < now.size(); ++column) {
      if (is_new || wanted[row][column] != shown_[row][column]) now[column] = wanted[row][column];
    }
    edits.append(edits.empty() ? "" : "、").append(std::to_string(row + 1)).append(" 行目");
  }
  std::string text;
  if (changed_by_others) {
    text += std::string(name_) +
            " はこの窓を開いた後でほかから書き換えられていたので、読み直して、"
            "ここで書き換えた所 (" +
            edits + ") だけを書きました\n";
  }
  if (const std::string lost = left_out(rows); !lost.empty()) {
    rule.may_go = [](const std::filesystem::path&) { return false; };
    rule.told = [&text](const std::filesystem::path& file, const std::filesystem::path& backup) {
      text += "元の " + path_text(file.filename()) + " は " + path_text(backup) + " に残しました\n";
    };
    text += std::string(name_) + ": " + lost + "\n";
  } else {
    rule = {};
  }
  save_table(path_, rows, saved_, rule);
  return text;
}

std::string TableFile::left_out(const GridEditor& grid) const {
  return left_out(rows_of(grid));
}

std::string TableFile::left_out(const std::vector<TableRow>& rows) const {
  const auto blank = std::ranges::find_if(rows, [](const TableRow& r) { return is_blank(r[0]); });
  const auto written = std::min(saved_, static_cast<std::size_t>(blank - rows.begin()));
  std::string numbers;
  for (std::size_t row = written; row < rows.size(); ++row) {
    if (is_blank_row(rows[row])) continue;
    numbers.append(numbers.empty() ? "" : "、").append(std::to_string(row + 1));
  }
  if (numbers.empty()) return {};
  return numbers + " 行目は保存されません (" +
         (written == saved_ ? "保存されるのは " + std::to_string(saved_) + " 行目まで"
                            : std::to_string(written + 1) + " 行目の ADIF が空のため") +
         "です)";
}

}  // namespace tobarine
