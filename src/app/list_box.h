// The horizontal scroll range of the list box that shows a text file.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace tobarine {

// The list box itself, with its own font.
class ListBox {
 public:
  virtual ~ListBox() = default;

  // Appends a line (CP932), or inserts it at the position.
  virtual void add(std::string_view line, std::optional<std::size_t> position) = 0;

  virtual int width_twips() const = 0;
  virtual int twips_per_pixel_y() const = 0;
  virtual int text_width(std::size_t bytes) const = 0;  // pixels
  virtual void set_horizontal_extent(int pixels) = 0;   // 0: no scroll bar
};

class ListBoxHS {
 public:
  explicit ListBoxHS(ListBox& list_box) : list_box_(list_box) {}

  ListBox& list_box() const { return list_box_; }

  // Adds the line and, while `auto_update` is on, widens the extent when needed.
  void add_line(std::string_view line, std::optional<std::size_t> position = {});
  void update_extent();

  // Pixels. A line is measured one byte longer than it is: a margin that has always been there.
  int measure(std::string_view line) const { return list_box_.text_width(line.size() + 1); }

  bool auto_update = true;

 private:
  ListBox& list_box_;
  int widest_ = 0;  // of the lines added, pixels
};

}  // namespace tobarine
