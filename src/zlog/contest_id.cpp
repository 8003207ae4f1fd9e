#include "zlog/contest_id.h"

#include <algorithm>

namespace tobarine {
namespace {

// A contest without modes of its own stands in the first column.
struct Contest {
  std::string_view name;  // as zLog spells it
  std::string_view cw;
  std::string_view phone = {};
  std::string_view rtty = {};
};

constexpr Contest kContests[] = {
    {"ARRL 10m Contest", "ARRL-10"},
    {"CQ WPX Contest", "CQ-WPX-CW", "CQ-WPX-SSB", "CQ-WPX-RTTY"},
    {"CQWW DX Contest", "CQ-WW-CW", "CQ-WW-SSB", "CQ-WW-RTTY"},
    {"All Asian DX Contest (Asia)", "ALL-ASIAN-DX-CW", "ALL-ASIAN-DX-PHONE"},
    {"ARRL International DX Contest (DX)", "ARRL-DX-CW", "ARRL-DX-SSB"},
    {"IARU HF World Championship", "IARU-HF"},
    {"iota Contest", "RSGB-IOTA"},
    {"JIDX Contest(JA)", "JIDX-CW", "JIDX-SSB"},
    {"Asia Pacific Sprint", "AP-SPRINT"},
    {"WAEDC Contest", "DARC-WAEDC-CW", "DARC-WAEDC-SSB", "DARC-WAEDC-RTTY"},
    {"ARI Int DXコンテスト", "ARI-DX"},
    {"ARRL 160m Contest W/VE", "ARRL-160"},
    {"CQMコンテスト (dx)", "CQ-M"},
    {"CQWW160コンテスト", "CQ-160-CW", "CQ-160-SSB"},
    {"HADXコンテスト (dx)", "HA-DX"},
    {"Helvetia DXコンテスト", "HELVETIA"},
    {"LZDX (dx)", "LZ DX"},
    {"OCDX (dx)", "OCEANIA-DX-CW", "OCEANIA-DX-SSB"},
    {"ＯＫ／ＯＭＤＸコンテスト（ＤＸ）", "OK-OM-DX"},
    {"ＯＫ／ＯＭＤＸコンテスト（ＥＵ）", "OK-OM-DX"},
    {"PACC (dx)", "PACC"},
    {"REFコンテスト (dx)", "REF-CW", "REF-SSB"},
    {"RSGB 21/28 MHz (DX)", "RSGB-21/28-CW", "RSGB-21/28-SSB"},
    {"SAC (DX/outside EU)", "SAC-CW", "SAC-SSB"},
    {"SPDXコンテスト", "SPDXCONTEST"},
    {"RussianDXコンテスト", "RDXC"},
    {"URDXコンテスト (dx)", "UKRAINIAN DX"},
    {"WAE", "DARC-WAEDC-CW", "DARC-WAEDC-SSB", "DARC-WAEDC-RTTY"},
    {"WAGコンテスト (DL)", "DARC-WAG"},
    {"WAGコンテスト (dx)", "DARC-WAG"},
    {"YO dx", "YOHFDX"},
    {"YU dx", "YUDXC"},
};

}  // namespace

std::string_view contest_id(std::string_view zlog_contest, std::string_view mode) {
  const auto* const found = std::ranges::find(kContests, zlog_contest, &Contest::name);
  if (found == std::end(kContests)) return {};
  if (found->phone.empty() || mode == "CW") return found->cw;
  if (mode == "SSB" || mode == "FM" || mode == "AM") return found->phone;
  return found->rtty;
}

}  // namespace tobarine
