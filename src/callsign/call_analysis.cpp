#include "callsign/call_analysis.h"

#include <algorithm>
#include <array>

#include "callsign/us_states.h"
#include "text/folder.h"
#include "text/strings.h"

namespace tobarine {
namespace {

constexpr std::uint16_t kUnitedStates = 291;
constexpr std::uint16_t kGuantanamo = 105;
constexpr std::uint16_t kJapan = 339;
constexpr std::uint16_t kMinamiTorishima = 177;
constexpr std::uint16_t kOgasawara = 192;
constexpr std::uint16_t kChina = 318;
constexpr std::uint16_t kEuropeanRussia = 54;
constexpr std::uint16_t kAsiaticRussia = 15;
constexpr std::uint16_t kKaliningrad = 126;

// Entities whose calls are issued by the United States; a call area's digit takes them there.
constexpr std::uint16_t kUsPossessions[] = {6,   9,   20,  43,  103, 105, 110, 123, 138,
                                            166, 174, 182, 197, 202, 285, 297, 515};

// Endings of two letters and more that do not move a call although some are prefixes as well.
constexpr std::string_view kNoPlace[] = {"AE", "AG", "AT", "FF", "IMD", "JOTA", "LGT", "LH",
                                         "LS", "LT", "LV", "PM", "SD",  "Y2K",  "YL",  "YOTA"};

// US states that are also the prefix by which visitors of a country are known.
constexpr std::string_view kStatesLikeCountries[] = {"CT", "LA", "OH", "OK", "PA"};

template <typename List>
bool is_in(const List& list, std::string_view text) {
  return std::ranges::find(list, text) != std::end(list);
}

bool is_letter(char c) {
  return c >= 'A' && c <= 'Z';
}

// At sea and in the air a station is in no entity.
bool is_nowhere(std::string_view ending) {
  return ending == "MM" || ending == "AM";
}

// Two letters and two digits, perhaps two letters more: a grid locator or a special number, in any
// case no prefix.
bool is_locator(std::string_view ending) {
  if (ending.size() != 4 && ending.size() != 6) return false;
  return is_letter(ending[0]) && is_letter(ending[1]) && is_digit(ending[2]) &&
         is_digit(ending[3]) &&
         (ending.size() == 4 || (is_letter(ending[4]) && is_letter(ending[5])));
}

// The ending says how the station works, not where. Single letters never name a place.
bool is_no_place(std::string_view ending) {
  if (ending.empty() || (ending.size() == 1 && !is_digit(ending[0]))) return true;
  if (ending.size() > 1 && all_digits(ending)) return true;
  return ending.starts_with("QRP") || is_locator(ending) || is_in(kNoPlace, ending);
}

bool is_us_possession(std::uint16_t dxcc) {
  return std::ranges::binary_search(kUsPossessions, dxcc);
}

bool is_russian(std::uint16_t dxcc) {
  return dxcc == kEuropeanRussia || dxcc == kAsiaticRussia || dxcc == kKaliningrad;
}

constexpr std::size_t kNone = std::string_view::npos;

std::size_t last_digit(std::string_view call) {
  return call.find_last_of("0123456789");
}

// The digit of the call area: the first behind the letters of the prefix (JA1, 7K1, R15CWC).
std::size_t area_digit(std::string_view call) {
  return call.find_first_of("0123456789", call.empty() || !is_digit(call[0]) ? 0 : 1);
}

// A whole call sign, as far as its shape tells.
bool is_station(std::string_view part) {
  return part.size() >= 4 && area_digit(part) != kNone && is_letter(part.back());
}

}  // namespace

// One question, with the call in upper case.
class CallAnalysis::Lookup {
 public:
  Lookup(const CallAnalysis& analysis, std::string_view date) : a_(analysis), date_(date) {}

  PlaceData find(std::string_view call) const {
    return call.find('/') == kNone ? exact_or_prefix(call) : portable(call);
  }

 private:
  PlaceData exact(std::string_view call) const {
    if (const unsigned dxcc = a_.call_overrides_.find(call, date_); dxcc != 0) return of(dxcc);
    const PlaceData* place = a_.prefixes_.full_call(call);
    return place == nullptr ? PlaceData() : *place;
  }

  PlaceData by_prefix(std::string_view call) const {
    if (const unsigned dxcc = a_.prefix_overrides_.find_prefix(call, date_); dxcc != 0) {
      return of(dxcc);
    }
    const auto match = a_.prefixes_.longest_prefix(call);
    if (!match) {
      const PlaceData* place = a_.prefixes_.without_digit(call);
      return place == nullptr ? PlaceData() : *place;
    }
    // Of the KG4 calls only those with two letters behind belong to Guantanamo.
    if (match->place->dxcc == kGuantanamo && call.size() > 3 && call.size() != 5) {
      return united_states('4');
    }
    return *match->place;
  }

  PlaceData exact_or_prefix(std::string_view call) const {
    const PlaceData known = exact(call);
    return known.dxcc != 0 ? known : by_prefix(call);
  }

  // A place with the entity's own zones, for entries that carry none.
  PlaceData of(unsigned dxcc) const {
    const Entity* entity = a_.entities_.by_number(dxcc);
    if (entity == nullptr) return {};
    return {entity->number,
            entity->cq_zone,
            entity->itu_zone,
            {entity->continent.at(0), entity->continent.at(1)}};
  }

  PlaceData of_area(char letter, char area, const PlaceData& unlisted) const {
    const std::array<char, 2> prefix{letter, area};
    const auto match = a_.prefixes_.longest_prefix({prefix.data(), prefix.size()});
    return match ? *match->place : unlisted;
  }

  PlaceData united_states(char area) const { return of_area('W', area, of(kUnitedStates)); }

  // Takes endings off from the right until one names a place or only the home call is left.
  PlaceData portable(std::string_view call) const {
    if (const unsigned dxcc = a_.call_overrides_.find(call, date_); dxcc != 0) return of(dxcc);
    const std::string_view first = call.substr(0, call.find('/'));
    std::string_view rest = call;
    char area = 0;
    for (std::size_t slash = rest.rfind('/'); slash != kNone; slash = rest.rfind('/')) {
      const std::string_view ending = rest.substr(slash + 1);
      if (is_nowhere(ending)) return {};
      if (const PlaceData known = exact(rest); known.dxcc != 0) return known;
      rest = rest.substr(0, slash);
      if (ending.size() == 1 && is_digit(ending[0])) {
        area = ending[0];
      } else if (!is_no_place(ending)) {
        if (is_state_of_home(first, rest, ending)) return in_the_states(first);
        if (rest.size() == first.size()) return of_two(first, ending, area);
        // More than two parts: the last is the place when it can be one, else it says nothing.
        const PlaceData place = names_a_place(ending) ? exact_or_prefix(ending) : PlaceData();
        if (place.dxcc != 0) return place;
      }
    }
    return area == 0 ? exact_or_prefix(rest) : moved_to_area(rest, area);
  }

  // A US state behind a call of the United States: W4ABC/TN, KL7QW/M/MN.
  bool is_state_of_home(std::string_view home, std::string_view rest,
                        std::string_view ending) const {
    if (!is_state_of("W", ending)) return false;
    const bool behind_another = rest.size() > home.size();  // nobody writes W1AW/M/PA for Holland
    if (is_in(kStatesLikeCountries, ending) && !behind_another) return false;
    const std::uint16_t dxcc = exact_or_prefix(home).dxcc;
    return dxcc == kUnitedStates || is_us_possession(dxcc);
  }

  PlaceData in_the_states(std::string_view home) const {
    const PlaceData at_home = exact_or_prefix(home);
    return at_home.dxcc == kUnitedStates ? at_home : of(kUnitedStates);
  }

  // A part that stands for a place, not for a station: a listed call or prefix, or a short one with
  // a digit and at most one letter behind it (VE3, C6A).
  bool names_a_place(std::string_view part) const {
    if (exact(part).dxcc != 0 || is_prefix(part)) return true;
    const std::size_t digit = last_digit(part);
    const bool short_form = part.size() <= 4 && digit != kNone && digit + 2 >= part.size();
    return short_form && a_.prefixes_.longest_prefix(part);
  }

  // A prefix and nothing else: listed as it stands, or with more digits only (KL7, VE3). Also the
  // prefix of an entity without the digit that the table lists (TU for TU0 .. TU9).
  bool is_prefix(std::string_view part) const {
    if (const auto match = a_.prefixes_.longest_prefix(part)) {
      return match->length == part.size() || all_digits(part.substr(match->length));
    }
    const PlaceData* place = a_.prefixes_.without_digit(part);
    const Entity* entity = place == nullptr ? nullptr : a_.entities_.by_number(place->dxcc);
    return entity != nullptr && entity->prefix == part;
  }

  PlaceData of_two(std::string_view left, std::string_view right, char area) const {
    const bool left_is_prefix = is_prefix(left);
    const bool right_is_prefix = is_prefix(right);
    if (!left_is_prefix && !right_is_prefix && is_station(left) && is_station(right)) {
      // Guests of a Chinese club sign with their own call before or behind the club's.
      for (const std::string_view part : {left, right}) {
        if (const PlaceData place = exact_or_prefix(part); place.dxcc == kChina) return place;
      }
    }
    // In front only a place can stand; behind, also an ending nobody has listed. Of two parts as
    // long as each other the one that is listed as it stands is the place.
    bool left_is_place = left.size() < right.size();
    if (left.size() == right.size()) {
      left_is_place = exact(left).dxcc != 0 || exact(right).dxcc == 0;
    }
    if (left_is_prefix != right_is_prefix) left_is_place = left_is_prefix;
    const std::string_view place_part = left_is_place ? left : right;
    const std::string_view home = left_is_place ? right : left;
    if (left_is_place || names_a_place(place_part)) {
      // A digit at the end completes a bare prefix: EA/DL1ABC/6.
      const bool completed = area != 0 && area_digit(place_part) == kNone;
      const PlaceData place = completed ? in_area(place_part, area) : exact_or_prefix(place_part);
      if (place.dxcc != 0) return place;
    }
    const PlaceData place = exact_or_prefix(home);
    return place.dxcc != 0 ? place : exact_or_prefix(place_part);
  }

  // A home call with another call area's digit behind it.
  PlaceData moved_to_area(std::string_view home, char area) const {
    const PlaceData at_home = exact_or_prefix(home);
    // The islands' holders who work there sign without a digit, or with /JD1 or /KH6.
    if (is_us_possession(at_home.dxcc)) return united_states(area);
    if (at_home.dxcc == kOgasawara || at_home.dxcc == kMinamiTorishima) return of(kJapan);
    const std::size_t at = area_digit(home);
    if (at == kNone || (home[at] == area && at == last_digit(home))) return at_home;
    // Also the holder of an island's call who lives in the States (NH6J/1).
    if (at_home.dxcc == kUnitedStates) return united_states(area);
    return in_area(home, area);
  }

  // The call or prefix with that digit in place of its own; as it stands where there is no such.
  PlaceData in_area(std::string_view part, char area) const {
    const PlaceData place = exact_or_prefix(part);
    if (is_russian(place.dxcc)) return area == '2' ? of(kKaliningrad) : of_area('R', area, place);
    const std::size_t at = area_digit(part);
    // A letter and a digit that only together are a prefix (C6, A7, J7) have no call areas.
    const bool letter_and_digit =
        at == 1 && a_.prefixes_.longest_prefix(part.substr(0, 1)) == std::nullopt;
    if (letter_and_digit) return place;
    std::string moved(part.substr(0, at));
    moved += area;
    const PlaceData there = exact_or_prefix(moved);
    return there.dxcc != 0 ? there : place;
  }

  const CallAnalysis& a_;
  std::string_view date_;
};

void CallAnalysis::load(const std::filesystem::path& folder) {
  CallAnalysis loaded;
  loaded.entities_.load(file_in(folder, "dxcc_mas.txt"));
  loaded.prefixes_.load(file_in(folder, "dxcc_hl.dat"));
  loaded.call_overrides_.load(file_in(folder, "dx_mastL.txt"), loaded.entities_);
  loaded.prefix_overrides_.load(file_in(folder, "dx_mastS.txt"), loaded.entities_);
  *this = std::move(loaded);
}

CallPlace CallAnalysis::find(std::string_view call, std::string_view date) const {
  call = trim(call);
  CallPlace result;
  if (call.size() > kLongestCall) return result;
  const PlaceData place = Lookup(*this, date).find(upper(call));
  result.entity = entities_.by_number(place.dxcc);
  if (result.entity == nullptr) return result;
  result.cq_zone = place.cq_zone;
  result.itu_zone = place.itu_zone;
  result.continent = result.entity->continent;
  return result;
}

}  // namespace tobarine
