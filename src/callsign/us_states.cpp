#include "callsign/us_states.h"

#include "text/strings.h"

namespace tobarine {
namespace {

constexpr std::string_view kStates =
    "AL,AR,AZ,CA,CO,CT,DE,FL,GA,IA,ID,IL,IN,KS,KY,LA,MA,MD,ME,MI,MN,MO,MS,"
    "MT,NC,ND,NE,NH,NJ,NM,NY,NV,OH,OK,OR,PA,RI,SC,SD,TN,TX,UT,VA,VT,WA,WI,WV,WY";

}  // namespace

bool has_states(std::string_view entity_prefix) {
  return entity_prefix == "W" || entity_prefix == "KH6" || entity_prefix == "KL";
}

bool is_state_of(std::string_view entity_prefix, std::string_view state) {
  if (entity_prefix == "KH6") return state == "HI";
  if (entity_prefix == "KL") return state == "AK";
  if (entity_prefix != "W") return false;
  bool found = false;
  for_each_piece(kStates, ',', [&](std::string_view s) { found = found || s == state; });
  return found;
}

}  // namespace tobarine
