#include "zlog/zlog_band.h"

#include <algorithm>
#include <array>

#include "text/strings.h"
#include "zlog/zlo_record.h"

namespace tobarine {
namespace {

// In the order of zlo::kBands.
constexpr std::array<std::string_view, zlo::kBands.size()> kAdifBands = {
    "160m", "80m", "40m", "30m",  "20m",  "17m",  "15m", "12m",
    "10m",  "6m",  "2m",  "70cm", "23cm", "13cm", "6cm", "3cm"};

}  // namespace

std::string_view zlog_band(std::string_view adif_band) {
  const auto same = [adif_band](std::string_view band) {
    return equal_ignoring_case(band, adif_band);
  };
  const auto* const found = std::ranges::find_if(kAdifBands, same);
  if (found == kAdifBands.end()) return {};
  return zlo::kBands[static_cast<std::size_t>(found - kAdifBands.begin())];
}

std::string_view adif_band(std::string_view zlog_band) {
  const auto* const found = std::ranges::find(zlo::kBands, zlog_band);
  if (found == zlo::kBands.end()) return {};
  return kAdifBands[static_cast<std::size_t>(found - zlo::kBands.begin())];
}

}  // namespace tobarine
