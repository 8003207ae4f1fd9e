#include "callsign/us_states.h"

#include <algorithm>
#include <iterator>

namespace tobarine {
namespace {

constexpr std::string_view kStates[] = {  // sorted
    "AL", "AR", "AZ", "CA", "CO", "CT", "DE", "FL", "GA", "IA", "ID", "IL", "IN", "KS", "KY", "LA",
    "MA", "MD", "ME", "MI", "MN", "MO", "MS", "MT", "NC", "ND", "NE", "NH", "NJ", "NM", "NV", "NY",
    "OH", "OK", "OR", "PA", "RI", "SC", "SD", "TN", "TX", "UT", "VA", "VT", "WA", "WI", "WV", "WY"};
static_assert(std::ranges::is_sorted(kStates));
static_assert(std::size(kStates) == 48);

}  // namespace

bool has_states(std::string_view entity_prefix) {
  return entity_prefix == "W" || entity_prefix == "KH6" || entity_prefix == "KL";
}

bool is_state_of(std::string_view entity_prefix, std::string_view state) {
  if (entity_prefix == "KH6") return state == "HI";
  if (entity_prefix == "KL") return state == "AK";
  return entity_prefix == "W" && state.size() == 2 && std::ranges::binary_search(kStates, state);
}

}  // namespace tobarine
