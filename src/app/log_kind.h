// What kind of log a file is.
#pragma once

#include <filesystem>
#include <optional>
#include <string_view>

#include "convert/h2l.h"

namespace tobarine {

enum class LogKind { kHamlogCsv, kHamlogHdb, kZlogAll, kZlogZlo, kAdif };

struct LogKindInfo {
  LogKind kind;
  std::string_view name;                     // as on the command line: "csv", "hdb", ...
  std::string_view label;                    // for people
  enum Input { kH2l, kL2h } input;           // of which conversions it is the input
  H2lSource source = H2lSource::kHamlogCsv;  // for kH2l
};

const LogKindInfo& log_kind_info(LogKind kind);
std::optional<LogKind> log_kind_from_name(std::string_view name);

// From the file's name, and where that says nothing from its first line (CP932, as read). Nothing
// when neither tells.
std::optional<LogKind> recognise_log(const std::filesystem::path& name,
                                     std::string_view first_line);

}  // namespace tobarine
