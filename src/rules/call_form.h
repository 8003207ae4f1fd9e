// Whether a text has the form of a call sign. No question of the entity: that is callsign/.
#pragma once

#include <string_view>

namespace tobarine {

// Why this cannot be a call sign as logs and services take it ("小文字があります"), for people;
// empty when it can. Also a listener's number (JA1-12345) and a portable call pass.
std::string_view call_oddity(std::string_view call);

}  // namespace tobarine
