#include "editors/grid_editor.h"

#include <algorithm>
#include <utility>

namespace tobarine {

GridEditor::GridEditor(std::vector<std::string> headers, std::size_t rows, std::size_t usable)
    : usable_(usable), cells_(rows + 1, std::vector<std::string>(headers.size())) {
  cells_[0] = std::move(headers);
  for (std::size_t row = 1; row < cells_.size(); ++row) cells_[row][0] = std::to_string(row);
}

void GridEditor::set_cell(std::size_t row, std::size_t column, std::string_view text) {
  cells_[row][column] = text;
}

void GridEditor::go_to(std::size_t row, std::size_t column) {
  row_ = std::clamp<std::size_t>(row, 1, rows() - 1);
  column_ = std::min(column, columns() - 1);
}

bool GridEditor::type(std::string_view character) {
  if (character.empty() || static_cast<unsigned char>(character[0]) <= ' ') return false;
  return begin(character);
}

bool GridEditor::open() {
  return begin(cells_[row_][column_]);
}

bool GridEditor::begin(std::string_view text) {
  editing_ = usable(row_, column_);
  if (editing_) text_ = text;
  if (!editing_ && tell) tell(false);
  return editing_;
}

void GridEditor::grid_focused() {
  if (!editing_) return;
  editing_ = false;
  if (cells_[row_][column_] == text_) return;
  cells_[row_][column_] = text_;
  if (tell) tell(true);
}

void GridEditor::advance() {
  if (moves_down) {
    go_to(row_ + 1, column_);
  } else if (column_ + 1 < columns()) {
    ++column_;
  } else if (row_ + 1 < rows()) {
    go_to(row_ + 1, 0);
  }
}

void GridEditor::press(Key key) {
  if (key == Key::kEscape) {
    editing_ = false;  // hidden before the grid takes the focus, so that nothing is stored
    return;
  }
  grid_focused();
  switch (key) {
    case Key::kUp:
      go_to(row_ - 1, column_);
      break;
    case Key::kDown:
      go_to(row_ + 1, column_);
      break;
    default:
      advance();
  }
}

}  // namespace tobarine
