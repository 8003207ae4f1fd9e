// Frequencies as whole hertz, their texts in MHz, and ADIF's bands.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tobarine {

using Hertz = std::uint64_t;

// "7.0123" (MHz, blanks around it passed over) in Hz; digits beyond the sixth behind the point do
// not count. Nothing for what is no plain decimal number above 0, or 10,000,000 MHz and more.
std::optional<Hertz> hertz_of_mhz(std::string_view mhz);

// The shortest plain decimal in MHz: "7.0123", "435".
std::string mhz_of_hertz(Hertz frequency);

// ADIF's band ("40m") that holds the frequency; empty when none does.
std::string_view band_of(Hertz frequency);

// ADIF's spelling of a band's name in any case; empty when it has none of that name.
std::string_view standard_band(std::string_view name);

}  // namespace tobarine
