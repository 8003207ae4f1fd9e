#include "zlog/log_zone.h"

namespace tobarine {
namespace {

std::string_view reason(const LogZone& zone) {
  const bool jst = zone.letter == 'J';
  switch (zone.source) {
    case ZoneSource::kFile:
      return "ファイルに記されている";
    case ZoneSource::kContest:
      return jst ? "DX コンテストではないので" : "DX コンテストなので";
    case ZoneSource::kChosen:
      if (!zone.against_file) return "選んだもの";
      return jst ? "選んだもの。ファイルには UTC とあります"
                 : "選んだもの。ファイルには JST とあります";
    case ZoneSource::kAssumed:
      break;
  }
  return "ファイルには記されていない";
}

}  // namespace

LogZone zlo_zone(const ContestInfo& contest, std::optional<char> chosen) {
  if (chosen) {
    return {*chosen, ZoneSource::kChosen, contest.zone && *contest.zone != *chosen};
  }
  if (contest.zone) return {*contest.zone, ZoneSource::kFile};
  return {contest.is_dx ? 'U' : 'J', ZoneSource::kContest};
}

LogZone all_zone(std::optional<char> chosen) {
  if (!chosen) return {};
  return {*chosen, ZoneSource::kChosen};
}

std::string_view zone_name(char letter) {
  return letter == 'J' ? "JST" : "UTC";
}

std::string zone_text(const LogZone& zone) {
  return std::string(zone_name(zone.letter)).append(" (").append(reason(zone)).append(")");
}

}  // namespace tobarine
