// The call-sign analysis: which DXCC entity a call belongs to.
//
// Full calls known to the tables come first, then the longest prefix. Portable calls are read as
// Japanese operators and the DXCC rules read them:
//   - /MM and /AM are in no entity;
//   - an ending that says how, not where (/P /M /QRP /A /LH /PM95 ...) does not move the call;
//   - a single digit replaces the call area: UA9AA/3 is European Russia, KH6XX/4 and KL7XX/7 are in
//     the 48 states, JD1XXX/1 on the main islands of Japan;
//   - a US state behind a US call is that state;
//   - else the side that is a prefix, and of two the shorter, is the place; of two whole calls the
//     Chinese club station.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

#include "callsign/entities.h"
#include "callsign/overrides.h"
#include "callsign/prefix_table.h"

namespace tobarine {

struct CallPlace {
  const Entity* entity = nullptr;  // nullptr: unknown call. Owned by the analysis.
  std::uint8_t cq_zone = 0;        // the call's own zones where the tables know them
  std::uint8_t itu_zone = 0;
  std::string_view continent;

  std::string_view prefix() const {
    return entity == nullptr ? std::string_view() : std::string_view(entity->prefix);
  }
  std::string_view qth() const {
    return entity == nullptr ? std::string_view() : std::string_view(entity->name);
  }
};

class CallAnalysis {
 public:
  // In bytes, with all endings and without blanks around; what is longer is no call and has no
  // entity. The longest that are worked hold some twenty.
  static constexpr std::size_t kLongestCall = 32;

  // Loads `dxcc_mas.txt`, `dxcc_hl.dat` and, where there, `dx_mastL.txt` and `dx_mastS.txt` from
  // the folder. Throws FileError, RecordError.
  void load(const std::filesystem::path& folder);

  // Any case, blanks around allowed. `date` is yyyymmdd, for overrides that count in a period only;
  // empty when unknown.
  CallPlace find(std::string_view call, std::string_view date = {}) const;

  const EntityList& entities() const { return entities_; }

 private:
  class Lookup;

  EntityList entities_;
  PrefixTable prefixes_;
  Overrides call_overrides_;
  Overrides prefix_overrides_;
};

}  // namespace tobarine
