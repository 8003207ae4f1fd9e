#include "log/frequency.h"

#include <algorithm>
#include <array>

#include "text/strings.h"

namespace tobarine {
namespace {

constexpr Hertz kHertzPerMhz = 1'000'000;

struct Band {
  std::string_view name;
  Hertz lowest;
  Hertz highest;
};

constexpr auto kBands = std::to_array<Band>({
#define TOBARINE_BAND(name, lowest, highest) {name, lowest, highest},
#include "log/bands.inc"
#undef TOBARINE_BAND
});

}  // namespace

std::optional<Hertz> hertz_of_mhz(std::string_view mhz) {
  constexpr Hertz kHighest = 10'000'000;  // MHz
  mhz = trim(mhz);
  const std::size_t point = std::min(mhz.find('.'), mhz.size());
  const std::string_view whole = mhz.substr(0, point);
  const std::string_view part = mhz.substr(std::min(point + 1, mhz.size()));
  if (whole.empty() && part.empty()) return std::nullopt;
  Hertz number = 0;
  for (const char c : whole) {
    if (!is_digit(c) || number >= kHighest) return std::nullopt;
    number = number * 10 + static_cast<Hertz>(c - '0');
  }
  if (number >= kHighest) return std::nullopt;
  number *= kHertzPerMhz;
  Hertz worth = kHertzPerMhz;
  for (const char c : part) {
    if (!is_digit(c)) return std::nullopt;
    worth /= 10;
    number += worth * static_cast<Hertz>(c - '0');
  }
  if (number == 0) return std::nullopt;
  return number;
}

std::string mhz_of_hertz(Hertz frequency) {
  std::string text = std::to_string(frequency / kHertzPerMhz);
  const Hertz part = frequency % kHertzPerMhz;
  if (part == 0) return text;
  text += '.' + std::to_string(kHertzPerMhz + part).substr(1);
  text.erase(text.find_last_not_of('0') + 1);
  return text;
}

std::string_view band_of(Hertz frequency) {
  const auto* band = std::ranges::find_if(
      kBands, [&](const Band& b) { return b.lowest <= frequency && frequency <= b.highest; });
  return band == kBands.end() ? std::string_view() : band->name;
}

std::string_view standard_band(std::string_view name) {
  const auto* band = std::ranges::find_if(
      kBands, [&](const Band& b) { return equal_ignoring_case(b.name, trim(name)); });
  return band == kBands.end() ? std::string_view() : band->name;
}

}  // namespace tobarine
