#include "app/list_box.h"

namespace tobarine {

void ListBoxHS::add_line(std::string_view line, std::optional<std::size_t> position) {
  list_box_.add(line, position);
  const int width = measure(line);
  if (width <= widest_) return;
  widest_ = width;
  if (auto_update) update_extent();
}

void ListBoxHS::update_extent() {
  // The vertical factor on purpose, as the extent has always been reckoned.
  const int width = list_box_.width_twips() / list_box_.twips_per_pixel_y();
  list_box_.set_horizontal_extent(width >= widest_ ? 0 : widest_);
}

}  // namespace tobarine
