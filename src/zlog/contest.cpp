#include "zlog/contest.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "text/cp932.h"
#include "text/input_file.h"
#include "text/strings.h"
#include "zlog/zlo_record.h"

namespace tobarine {
namespace {

// As zLog spells them, blanks and full-width letters included; "ct Day" too.
constexpr std::array<std::string_view, 44> kDxContests = {
    "ARRL 10m Contest",
    "CQ WPX Contest",
    "CQWW DX Contest",
    "All Asian DX Contest (Asia)",
    "ARRL International DX Contest (DX)",
    "IARU HF World Championship",
    "iota Contest",
    "JIDX Contest(JA)",
    "Asia Pacific Sprint",
    "WAEDC Contest",
    "クロアチアCWコンテスト",
    "ARI Int DXコンテスト",
    "ARRL 160m Contest W/VE",
    "CQMコンテスト (dx)",
    "CQWW160コンテスト",
    "ct Day",
    "EA dx",
    "HADXコンテスト (dx)",
    "Helvetia DXコンテスト",
    "HKDXコンテスト (dx)",
    "LZDX (dx)",
    "MARCONIコンテスト",
    "OCDX (dx)",
    "ＯＫ／ＯＭＤＸコンテスト（ＤＸ）",
    "ＯＫ／ＯＭＤＸコンテスト（ＥＵ）",
    "PACC (dx)",
    "RAC",
    "REFコンテスト (dx)",
    "RSGB 21/28 MHz (DX)",
    "RSGB 7MHz (DX)",
    "SAC (DX/outside EU)",
    "SEANETコンテスト",
    "SEANETコンテスト (dx)",
    "SPDXコンテスト",
    "RussianDXコンテスト",
    "URDXコンテスト (dx)",
    "WAE",
    "WAGコンテスト (DL)",
    "WAGコンテスト (dx)",
    "WW South America CW (SA)",
    "WW South America CW (DX)",
    "YO dx",
    "YU dx",
    "YVDXコンテスト (dx)",
};

// Versions that did not know of zones left other numbers in the word.
std::optional<char> zone_of(zlo::Bytes header) {
  const unsigned word = zlo::read_16(header, zlo::kZone);
  if (word == zlo::kZoneUtc) return 'U';
  if (word == zlo::kZoneJst) return 'J';
  return std::nullopt;
}

}  // namespace

std::optional<std::size_t> dx_contest_index(std::string_view name) {
  const auto* found = std::ranges::find(kDxContests, name);
  if (found == kDxContests.end()) return std::nullopt;
  return static_cast<std::size_t>(found - kDxContests.begin());
}

ContestInfo contest_of(std::span<const unsigned char> header) {
  ContestInfo info;
  info.name = trim(from_cp932(zlo::text_bytes(header, zlo::kContestName)));
  info.is_dx = dx_contest_index(info.name).has_value();
  info.zone = zone_of(header);
  return info;
}

ContestInfo read_contest(const std::filesystem::path& zlo) {
  InputFile file(zlo);
  zlo::Record header{};
  file.read(reinterpret_cast<char*>(header.data()), header.size());
  ContestInfo info = contest_of(header);
  // A half is rounded to the even number, which counts a broken last record now and then only.
  const double records = static_cast<double>(file.size()) / zlo::kRecordSize;
  info.contacts = static_cast<std::size_t>(std::max(0.0, std::nearbyint(records - 1)));
  return info;
}

}  // namespace tobarine
