// The US states as Hamlog users note them in their remarks.
#pragma once

#include <string_view>

namespace tobarine {

// True when a contact with a station of this entity prefix can be with that state: "HI" for KH6,
// "AK" for KL, one of the 48 contiguous states for W. Upper case.
bool is_state_of(std::string_view entity_prefix, std::string_view state);

// True for the three prefixes above.
bool has_states(std::string_view entity_prefix);

}  // namespace tobarine
