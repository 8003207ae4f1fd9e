// The file of a conversion table behind one of the window's grids. It is written only when a cell
// was edited here; what others have changed in it meanwhile stays.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "editors/grid_editor.h"
#include "rules/conversion_tables.h"

namespace tobarine {

class TableFile {
 public:
  // Of the file's rows, `most` are read and `saved` written.
  TableFile(std::string_view name, std::size_t most, std::size_t saved)
      : name_(name), most_(most), saved_(saved) {}

  // Reads the file and fills the grid with it. Throws FileError, RecordError.
  void fill(const std::filesystem::path& folder, GridEditor& grid);

  // Writes the cells that were edited into the file as it is now, and returns what the user should
  // know, lines ended by LF. A file some of whose rows are not written again is renamed first.
  // Throws FileError, RecordError; the file is as it was then.
  std::string save(const GridEditor& grid, KeepRule rule);

  // Which rows saving would leave out; empty when none.
  std::string left_out(const GridEditor& grid) const;

 private:
  std::string left_out(const std::vector<TableRow>& rows) const;

  std::string_view name_;
  std::size_t most_;
  std::size_t saved_;
  std::filesystem::path path_;
  std::vector<TableRow> file_;   // as it was read
  std::vector<TableRow> shown_;  // as the grid showed it first, a row for each of its rows
};

}  // namespace tobarine
