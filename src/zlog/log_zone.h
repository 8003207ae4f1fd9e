// In which zone the times of a zLog log are, and how that is known.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "zlog/contest.h"

namespace tobarine {

enum class ZoneSource {
  kFile,     // the header says it
  kContest,  // the header does not; DX contests are logged in UTC, the others in JST
  kChosen,   // the user says it
  kAssumed,  // nobody says it
};

struct LogZone {
  char letter = 'U';  // 'U' (UTC) or 'J' (JST)
  ZoneSource source = ZoneSource::kAssumed;
  bool against_file = false;  // chosen, and the header says the other
};

// `chosen` is what the user says, 'U' or 'J'; it wins.
LogZone zlo_zone(const ContestInfo& contest, std::optional<char> chosen);
LogZone all_zone(std::optional<char> chosen);  // a text log says nothing

std::string_view zone_name(char letter);  // "UTC" or "JST"

// The zone and how it is known: "JST (ファイルに記されている)".
std::string zone_text(const LogZone& zone);

}  // namespace tobarine
