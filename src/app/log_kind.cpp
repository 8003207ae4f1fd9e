#include "app/log_kind.h"

#include <algorithm>
#include <array>

#include "text/error.h"
#include "text/strings.h"
#include "zlog/all_reader.h"

namespace tobarine {
namespace {

constexpr LogKindInfo kKinds[] = {
    {LogKind::kHamlogCsv, "csv", "Hamlog v5.00 以降の CSV", LogKindInfo::kH2l},
    {LogKind::kHamlogHdb, "hdb", "Hamlog のデータベース", LogKindInfo::kH2l, H2lSource::kHamlogHdb},
    {LogKind::kZlogAll, "z_all", "zLog の .ALL", LogKindInfo::kH2l, H2lSource::kZlogAll},
    {LogKind::kZlogZlo, "z_zlo", "zLog の .ZLO", LogKindInfo::kH2l, H2lSource::kZlogZlo},
    {LogKind::kAdif, "adi", "ADIF", LogKindInfo::kL2h},
};

struct Extension {
  std::string_view text;
  LogKind kind;
};

constexpr Extension kExtensions[] = {
    {".csv", LogKind::kHamlogCsv}, {".hdb", LogKind::kHamlogHdb}, {".all", LogKind::kZlogAll},
    {".zlo", LogKind::kZlogZlo},   {".adi", LogKind::kAdif},      {".adif", LogKind::kAdif},
    {".zlox", LogKind::kZlogZlo},  // refused when it is opened, with what to do
};

}  // namespace

const LogKindInfo& log_kind_info(LogKind kind) {
  return *std::ranges::find(kKinds, kind, &LogKindInfo::kind);
}

std::optional<LogKind> log_kind_from_name(std::string_view name) {
  const auto* found = std::ranges::find(kKinds, name, &LogKindInfo::name);
  if (found == std::end(kKinds)) return std::nullopt;
  return found->kind;
}

std::optional<LogKind> recognise_log(const std::filesystem::path& name,
                                     std::string_view first_line) {
  const std::string extension = path_text(name.extension());
  for (const Extension& known : kExtensions) {
    if (equal_ignoring_case(extension, known.text)) return known.kind;
  }
  if (text_log_form(first_line) == TextLogForm::kZlogAll) return LogKind::kZlogAll;
  if (contains(upper(first_line), "<ADIF_VER") || contains(upper(first_line), "<CALL:")) {
    return LogKind::kAdif;
  }
  if (contains(first_line, ",")) return LogKind::kHamlogCsv;
  return std::nullopt;
}

}  // namespace tobarine
