// What tobarine-cli writes: lines for people, tab-separated lines or JSON on standard output, and
// short notes on standard error.
#pragma once

#include <array>
#include <chrono>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/reference_tools.h"
#include "app/settings.h"
#include "callsign/call_analysis.h"
#include "cli/options.h"
#include "convert/report.h"
#include "zlog/contest.h"
#include "zlog/log_zone.h"

namespace tobarine {

// A line on standard error, unless --quiet.
void print_note(const CliOptions& options, std::string_view text);

struct RunNames {
  std::string_view kind;
  std::string input;
  std::vector<std::string> outputs;
};

// The counts and, as the options say, the report; on standard error when the output goes to
// standard output. A run that a record ended prints no "処理終了"
// and its message on standard error.
void print_run(const CliOptions& options, const RunNames& names, const ConversionReport& report);

struct LogInfo {
  std::string_view kind;
  std::string_view label;
  std::string_view layout;              // empty: does not apply
  std::optional<std::size_t> contacts;  // nothing: not counted for this kind
  std::optional<ContestInfo> contest;   // of logs that tell it
  std::optional<LogZone> zone;          // of zLog's logs
  std::string note;                     // what a conversion would do to it; empty: no harm
};
void print_info(const CliOptions& options, const LogInfo& info);

void print_settings(const CliOptions& options, const Settings& settings);

void print_call(const CliOptions& options, const std::string& call, const CallPlace& place);
void print_code(const CliOptions& options, const std::string& code, std::string_view dxcc);
void print_dxcc_file(const CliOptions& options, const DxccFile& built, const std::string& output);
// `place` is nullptr when the number is unknown.
void print_jcc(const CliOptions& options, const std::string& number, const JccPlace* place);
void print_jcc_build(const CliOptions& options, const JccRenewal& renewal,
                     const std::string& output);
// Dates in the order of the lists: on the server, and of the lists last fetched (empty: none).
void print_jarl_dates(const CliOptions& options, const JarlDates& server,
                      const std::array<std::string, 3>& ours);
void print_jarl_download(const CliOptions& options, const JarlLists& fetched,
                         const std::string& folder);

void print_learned(const CliOptions& options, const CodesLearned& learned);

// A bar on standard error for runs of more than a second.
class ProgressBar {
 public:
  explicit ProgressBar(bool enabled) : enabled_(enabled) {}
  void show(double done);  // 0 .. 1
  void clear();

 private:
  using Clock = std::chrono::steady_clock;
  bool enabled_;
  bool shown_ = false;
  Clock::time_point start_ = Clock::now();
  Clock::time_point last_{};
};

}  // namespace tobarine
