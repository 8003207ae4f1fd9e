// How an ADIF file is read, and what the user is told when the classic way would hurt it.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "hamlog/adif_census.h"

namespace tobarine {

// kAsk: the classic way where it hurts no contact, else the run is refused.
enum class AdifReading { kAsk, kClassic, kStandard };

// The ways that there are, by the words that the command line takes for them.
struct AdifReadingName {
  std::string_view word;
  std::string_view label;  // on a button
  AdifReading reading;
};
std::span<const AdifReadingName> adif_readings();

// How to go on after a refusal, on the command line.
std::string reading_advice();

// What the classic way would do to the file, in words; empty when it hurts no contact.
std::string classic_harm(const AdifLayout& layout);

}  // namespace tobarine
