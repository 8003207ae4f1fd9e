#include "log/mode.h"

#include <algorithm>
#include <array>
#include <string>

#include "text/strings.h"

namespace tobarine {
namespace {

constexpr auto kModes = std::to_array<std::string_view>({
#define TOBARINE_MODE(mode) mode,
#define TOBARINE_SUBMODE(submode, mode)
#include "log/modes.inc"
#undef TOBARINE_MODE
#undef TOBARINE_SUBMODE
});

constexpr auto kSubmodes = std::to_array<AdifMode>({
#define TOBARINE_MODE(mode)
#define TOBARINE_SUBMODE(submode, mode) {mode, submode},
#include "log/modes.inc"
#undef TOBARINE_MODE
#undef TOBARINE_SUBMODE
});

static_assert(std::ranges::is_sorted(kModes));
static_assert(std::ranges::is_sorted(kSubmodes, {}, &AdifMode::submode));

}  // namespace

std::optional<AdifMode> standard_mode(std::string_view name) {
  const std::string wanted = upper(trim(name));
  const auto* mode = std::ranges::lower_bound(kModes, std::string_view(wanted));
  if (mode != kModes.end() && *mode == wanted) return AdifMode{*mode, {}};
  const auto* sub =
      std::ranges::lower_bound(kSubmodes, std::string_view(wanted), {}, &AdifMode::submode);
  if (sub != kSubmodes.end() && sub->submode == wanted) return *sub;
  return std::nullopt;
}

std::optional<AdifMode> standard_mode(std::string_view mode, std::string_view submode) {
  const auto above = standard_mode(mode);
  if (is_blank(submode)) return above;
  const auto beneath = standard_mode(submode);
  if (beneath && !beneath->submode.empty()) return beneath;
  if (!above || !above->submode.empty()) return above ? above : beneath;
  return AdifMode{above->mode, trim(submode)};
}

}  // namespace tobarine
