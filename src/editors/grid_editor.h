// Editing in the grids of the band and mode tables: a grid that is only looked at, and a text box
// laid over its current cell while that is edited.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace tobarine {

class GridEditor {
 public:
  // `rows` without the header row, which is row 0 and holds `headers`; the others are numbered in
  // column 0. The numbers and the rows behind `usable` are only looked at.
  GridEditor(std::vector<std::string> headers, std::size_t rows, std::size_t usable);

  std::size_t rows() const { return cells_.size(); }  // the header included
  std::size_t columns() const { return cells_[0].size(); }
  const std::string& cell(std::size_t row, std::size_t column) const { return cells_[row][column]; }
  void set_cell(std::size_t row, std::size_t column, std::string_view text);
  bool usable(std::size_t row, std::size_t column) const { return row <= usable_ && column > 0; }

  // Told of what the user does: a cell has changed (true), or he tried one that cannot be edited.
  std::function<void(bool changed)> tell;

  std::size_t row() const { return row_; }
  std::size_t column() const { return column_; }
  void go_to(std::size_t row, std::size_t column);  // never the header row

  // Where Enter and Tab go after a cell is stored: down, or right and at a row's end to the next.
  bool moves_down = false;

  // The text box: visible (yellow) over the current cell while editing.
  bool editing() const { return editing_; }
  const std::string& text() const { return text_; }
  void set_text(std::string_view text) { text_ = text; }

  // On the grid. A character that is typed replaces the cell's text; control characters and blanks
  // do not. Enter, F2 and a double click begin with the text as it is. The cursor stands at the end
  // either way. False: nothing to do.
  bool type(std::string_view character);
  bool open();

  enum class Key { kEscape, kEnter, kTab, kUp, kDown };
  // In the text box. Escape leaves the cell as it was, the others store the text and move.
  void press(Key key);

  // The grid has got the focus: what the visible text box holds is stored.
  void grid_focused();

 private:
  void advance();
  bool begin(std::string_view text);

  std::size_t usable_;
  std::vector<std::vector<std::string>> cells_;
  std::size_t row_ = 1;
  std::size_t column_ = 1;
  bool editing_ = false;
  std::string text_;
};

}  // namespace tobarine
