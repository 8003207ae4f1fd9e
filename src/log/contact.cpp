#include "log/contact.h"

#include <algorithm>
#include <charconv>

#include "text/strings.h"

namespace tobarine {

void Contact::clear() {
  entries_.clear();
  text_.clear();
  stated_zone_ = Zone::kUtc;
  origin = {};
}

std::string_view Contact::name_of(const Place& place) const {
  if (place.field != Field::kOther) return field_name(place.field);
  return std::string_view(text_).substr(place.name, place.name_size);
}

std::string_view Contact::value_of(const Place& place) const {
  return std::string_view(text_).substr(place.value, place.value_size);
}

Contact::Entry Contact::operator[](std::size_t index) const {
  const Place& place = entries_[index];
  return {place.field, name_of(place), value_of(place)};
}

std::vector<Contact::Place>::const_iterator Contact::find(Field field,
                                                          std::string_view name) const {
  if (field != Field::kOther) return std::ranges::find(entries_, field, &Place::field);
  return std::ranges::find_if(entries_, [&](const Place& place) {
    return place.field == Field::kOther && equal_ignoring_case(name_of(place), name);
  });
}

std::string_view Contact::get(Field field) const {
  const auto place = find(field, {});
  return place == entries_.end() ? std::string_view() : value_of(*place);
}

std::string_view Contact::get(std::string_view name) const {
  const auto place = find(field_of(name), name);
  return place == entries_.end() ? std::string_view() : value_of(*place);
}

void Contact::set(Field field, std::string_view value) {
  set(field, {}, value);
}

void Contact::set(std::string_view name, std::string_view value) {
  set(field_of(name), name, value);
}

void Contact::set(Field field, std::string_view name, std::string_view value) {
  const auto found = find(field, name);
  if (value.empty()) {
    if (found != entries_.end()) entries_.erase(found);
    return;
  }
  const auto put = [this](std::string_view text) {
    const auto begin = static_cast<std::uint32_t>(text_.size());
    text_.append(text);
    return begin;
  };
  // A view into text_ must not die when text_ grows.
  const bool own = value.data() >= text_.data() && value.data() < text_.data() + text_.size();
  const std::string copy(own ? value : std::string_view());
  if (own) value = copy;
  const auto size = static_cast<std::uint32_t>(value.size());
  if (found != entries_.end()) {
    Place& place = entries_[static_cast<std::size_t>(found - entries_.begin())];
    place.value = put(value);
    place.value_size = size;
    return;
  }
  const auto name_size = static_cast<std::uint32_t>(field == Field::kOther ? name.size() : 0);
  const std::uint32_t name_begin = put(name.substr(0, name_size));
  entries_.push_back({field, name_begin, name_size, put(value), size});
}

std::optional<Moment> Contact::moment() const {
  return Moment::read(get(Field::kQsoDate), get(Field::kTimeOn), Zone::kUtc);
}

void Contact::set_moment(const Moment& moment) {
  set(Field::kQsoDate, moment.date());
  set(Field::kTimeOn, moment.time());
  stated_zone_ = moment.stated_in();
}

std::optional<unsigned> Contact::dxcc() const {
  const std::string_view text = trim(get(Field::kDxcc));
  unsigned number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return number;
}

}  // namespace tobarine
