#include "editors/grid_editor.h"

#include <algorithm>
#include <utility>

namespace tobarine {

GridEditor::GridEditor(std::vector<std::string> headers, std::size_t rows)
    : cells_(rows + 1, std::vector<std::string>(headers.size())) {
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
  text_ = character;
  editing_ = true;
  return true;
}

void GridEditor::open() {
  text_ = cells_[row_][column_];
  editing_ = true;
}

void GridEditor::grid_focused() {
  if (!editing_) return;
  cells_[row_][column_] = text_;
  editing_ = false;
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
