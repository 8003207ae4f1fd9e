// What all runs share: output paths and what a run asks of its surroundings.
#pragma once

#include <cstddef>
#include <cstdint>
#include <ctime>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

#include "convert/report.h"
#include "text/error.h"
#include "text/input_file.h"
#include "text/keep_rule.h"

namespace tobarine {

// The input path up to and including its first ".", then the extension; a path without a dot gets
// "." and the extension. The first dot is meant, even when it stands in a folder's name: the output
// has always been found there. The path is made absolute first.
std::filesystem::path output_path(const std::filesystem::path& input, std::string_view extension);

// What the user should know of the name that output_path() has made of the input's: it stands in
// another folder, or lacks a part of the name. Empty when it is as anyone would expect.
std::string output_path_note(const std::filesystem::path& input,
                             const std::filesystem::path& output);

// Thrown where the user's wish to stop is seen; the runs turn it into `stopped_by`.
class StopRequested : public Error {
 public:
  StopRequested() : Error("中止しました。そこまでに書いた交信は残っています") {}
};

// May be empty.
struct RunContext {
  // Called now and then with the done part, 0 .. 1. False: the run is to stop.
  std::function<bool(double)> progress;
  std::function<std::tm()> now;  // local time, for the names of files that are kept

  // Calls `progress` at every few thousandth contact. Throws StopRequested.
  void tell(std::size_t contacts, std::uint64_t bytes_done, std::uint64_t bytes_all) const;

  // For a part of the run, which is `from` .. `to` of the whole.
  RunContext part(double from, double to) const;
};

// Tells a context how much of a file has been read, whenever more of it has.
class ReadingPace {
 public:
  explicit ReadingPace(RunContext context) : context_(std::move(context)) {}
  void at(const InputFile& file);  // throws StopRequested

 private:
  RunContext context_;
  std::uint64_t told_ = 0;
};

// Of files that stand where a run writes: an ADIF of our own may go, anything else is renamed and
// the report tells it. Both must live as long as the rule.
KeepRule keep_rule(const RunContext& context, FindingLog& findings);

// What tells of such a file: "NAME -> NAME....bak" behind the heading of the finding.
std::string kept_file_text(const std::filesystem::path& file, const std::filesystem::path& backup);

// Does a part of a run. A failure goes into the report's `stopped_by`.
void do_part(ConversionReport& report, const std::function<void()>& part);

// Does what comes before the output is opened, and opens it. The user's wish to stop goes into the
// report; a failure goes to the caller as it is, unless the run has renamed a file by then, which
// the report must tell.
void prepare(ConversionReport& report, const std::function<void()>& part);

}  // namespace tobarine
