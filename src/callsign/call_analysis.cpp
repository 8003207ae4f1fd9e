#include "callsign/call_analysis.h"

#include <algorithm>
#include <array>

#include "text/folder.h"
#include "text/strings.h"

namespace tobarine {
namespace {

constexpr std::uint16_t kUnitedStates = 291;
constexpr std::uint16_t kGuantanamo = 105;
constexpr std::uint16_t kJapan = 339;
constexpr std::uint16_t kMinamiTorishima = 177;
constexpr std::uint16_t kOgasawara = 192;

// Entities whose calls are issued by the United States; another call area's digit takes them home.
constexpr std::uint16_t kUsPossessions[] = {6,   9,   20,  43,  103, 105, 110, 123, 138,
                                            166, 174, 182, 197, 202, 285, 297, 515};

// Endings of two letters and more that do not move a call although some are prefixes as well.
constexpr std::string_view kNoPlace[] = {"AE", "AG", "AM", "FF", "IMD", "JOTA", "LGT",
                                         "LH", "LT", "LV", "MM", "Y2K", "YL",   "YOTA"};

// The ending says how the station works, not where. Single letters never name a place.
bool is_no_place(std::string_view ending) {
  if (ending.empty() || (ending.size() == 1 && !is_digit(ending[0]))) return true;
  if (ending.starts_with("QRP")) return true;
  return std::ranges::find(kNoPlace, ending) != std::end(kNoPlace);
}

bool is_us_possession(std::uint16_t dxcc) {
  return std::ranges::binary_search(kUsPossessions, dxcc);
}

constexpr std::size_t kNone = std::string_view::npos;

std::size_t last_digit(std::string_view call) {
  return call.find_last_of("0123456789");
}

}  // namespace

// One question, with the call in upper case.
class CallAnalysis::Lookup {
 public:
  Lookup(const CallAnalysis& analysis, std::string_view date) : a_(analysis), date_(date) {}

  PlaceData find(std::string_view call) const {
    if (const PlaceData known = exact(call); known.dxcc != 0) return known;
    if (call.find('/') == kNone) return by_prefix(call);
    return portable(call);
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
    if (!match) return {};
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
    return {entity->number,
            entity->cq_zone,
            entity->itu_zone,
            {entity->continent.at(0), entity->continent.at(1)}};
  }

  PlaceData united_states(char area) const {
    const std::array<char, 2> prefix{'W', area};
    const auto match = a_.prefixes_.longest_prefix({prefix.data(), prefix.size()});
    return match ? *match->place : of(kUnitedStates);
  }

  PlaceData portable(std::string_view call) const {
    const std::size_t slash = call.rfind('/');
    const std::string_view rest = call.substr(0, slash);
    const std::string_view ending = call.substr(slash + 1);
    const bool digits = all_digits(ending);
    if (digits && ending.size() == 1) return moved_to_area(rest, ending[0]);
    if (digits || is_no_place(ending)) return find(rest);
    const std::size_t second = rest.rfind('/');
    if (second != kNone) {
      // Three parts and more: the last one is the place when it can be one, else it says nothing.
      const PlaceData place = looks_like_prefix(ending) ? exact_or_prefix(ending) : PlaceData();
      return place.dxcc != 0 ? place : find(rest);
    }
    return of_two(rest, ending);
  }

  // A part that stands for a place, not for a station: a listed call or prefix, or a short one with
  // a digit and at most one letter behind it (VE3, C6A).
  bool looks_like_prefix(std::string_view part) const {
    if (is_listed(part)) return true;
    const std::size_t digit = last_digit(part);
    const bool short_form = part.size() <= 4 && digit != kNone && digit + 2 >= part.size();
    return short_form && a_.prefixes_.longest_prefix(part);
  }

  bool is_listed(std::string_view part) const {
    if (exact(part).dxcc != 0) return true;
    const auto match = a_.prefixes_.longest_prefix(part);
    return match && match->length == part.size();
  }

  PlaceData of_two(std::string_view left, std::string_view right) const {
    // In front only a place can stand; behind, also an ending nobody has listed. Of two parts as
    // long as each other the one that is listed as it stands is the place.
    const bool tie = left.size() == right.size();
    const bool left_is_place =
        tie ? is_listed(left) || !is_listed(right) : left.size() < right.size();
    const std::string_view place_part = left_is_place ? left : right;
    const std::string_view home = left_is_place ? right : left;
    if (left_is_place || looks_like_prefix(place_part)) {
      if (const PlaceData place = exact_or_prefix(place_part); place.dxcc != 0) return place;
    }
    const PlaceData place = exact_or_prefix(home);
    return place.dxcc != 0 ? place : exact_or_prefix(place_part);
  }

  PlaceData moved_to_area(std::string_view home, char area) const {
    const PlaceData at_home = find(home);
    const std::size_t at = last_digit(home);
    if (home.find('/') != kNone || at == kNone || home[at] == area) return at_home;
    if (is_us_possession(at_home.dxcc)) return united_states(area);
    if (at_home.dxcc == kOgasawara || at_home.dxcc == kMinamiTorishima) return of(kJapan);
    // A letter and a digit that only together are a prefix (C6, A7, J7) have no call areas.
    const bool letter_and_digit =
        at == 1 && a_.prefixes_.longest_prefix(home.substr(0, 1)) == std::nullopt;
    if (letter_and_digit) return at_home;
    std::string moved(home.substr(0, at));
    moved += area;
    const PlaceData place = exact_or_prefix(moved);
    return place.dxcc != 0 ? place : at_home;
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
  const PlaceData place = Lookup(*this, date).find(upper(trim(call)));
  CallPlace result;
  result.entity = entities_.by_number(place.dxcc);
  if (result.entity == nullptr) return result;
  result.cq_zone = place.cq_zone;
  result.itu_zone = place.itu_zone;
  result.continent = result.entity->continent;
  return result;
}

}  // namespace tobarine
