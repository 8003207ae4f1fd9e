// The command line, parsed.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace tobarine {

enum class Command {
  kH2l,
  kEqsl,
  kL2h,
  kAdifToZlog,
  kInfo,
  kSettings,
  kLookupCalls,
  kLookupCodes,
  kLookupJcc,
  kBuildDxcc,
  kBuildJcc,
  kBuildCodes,
  kJarlCheck,
  kJarlDownload
};

// As a file's name: standard input or output.
inline constexpr std::string_view kStandard = "-";

struct CliOptions {
  Command command = Command::kInfo;
  std::filesystem::path called_as;  // the program's name as it was called
  std::filesystem::path home;
  std::filesystem::path trace;
  std::vector<std::string> set;  // "KEY=VALUE"
  bool report = false;
  bool json = false;
  bool quiet = false;
  std::filesystem::path input;
  std::filesystem::path output;
  std::string kind;
  std::filesystem::path
      keep_intermediate;      // where a zLog log's intermediate file goes; empty: nowhere
  std::string time = "none";  // none, jst, utc, ja
  std::string reading;        // of an ADIF: a word of adif_readings(); empty: not said
  std::string date;           // yyyymmdd
  std::vector<std::string> items;
  std::string url;     // of the JARL lists; empty: the league's own
  long timeout = 60;   // seconds
  bool force = false;  // build: replace a reference file by one that has lost much
};

struct ParsedOptions {
  CliOptions options;
  int exit_status = -1;  // 0: everything is said, end with it; -1: go on
};

// `arguments` in UTF-8, the program's name first. Throws UsageError.
ParsedOptions parse_options(const std::vector<std::string>& arguments);

}  // namespace tobarine
