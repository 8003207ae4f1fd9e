#include "log/field.h"

#include <array>

#include "text/strings.h"

namespace tobarine {
namespace {

constexpr std::array<std::string_view, kFieldCount + 1> kNames = {
#define TOBARINE_FIELD(enumerator, name) name,
#include "log/fields.inc"
#undef TOBARINE_FIELD
    ""};

// A table open for collisions: the standard's names spread over four times as many places.
constexpr std::size_t kPlaces = 1024;
static_assert(kFieldCount * 4 <= kPlaces);

constexpr char upper_letter(char c) {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

constexpr std::size_t place_of(std::string_view name) {
  std::uint32_t hash = 2166136261U;
  for (const char c : name) {
    hash = (hash ^ static_cast<unsigned char>(upper_letter(c))) * 16777619U;
  }
  return (hash ^ hash >> 15U) % kPlaces;
}

constexpr std::array<Field, kPlaces> make_places() {
  std::array<Field, kPlaces> places{};
  places.fill(Field::kOther);
  for (std::size_t i = 0; i < kFieldCount; ++i) {
    std::size_t place = place_of(kNames[i]);
    while (places[place] != Field::kOther) place = (place + 1) % kPlaces;
    places[place] = static_cast<Field>(i);
  }
  return places;
}

constexpr std::array<Field, kPlaces> kFieldAt = make_places();

}  // namespace

std::string_view field_name(Field field) {
  return kNames[static_cast<std::size_t>(field)];
}

Field field_of(std::string_view name) {
  for (std::size_t place = place_of(name);; place = (place + 1) % kPlaces) {
    const Field field = kFieldAt[place];
    if (field == Field::kOther || equal_ignoring_case(field_name(field), name)) return field;
  }
}

}  // namespace tobarine
