// What every command shares: the program folder, the settings of this run and the trace log.
#pragma once

#include <filesystem>
#include <string_view>
#include <vector>

#include "app/program_folder.h"
#include "app/settings.h"
#include "app/trace_log.h"
#include "cli/options.h"
#include "convert/reference_tables.h"
#include "text/keep_rule.h"
#include "text/readable_input.h"

namespace tobarine {

class Session {
 public:
  // Finds the program folder, reads the settings and applies --set. Nothing is written there,
  // except what was delivered since into the user's own copy. Throws FileError, RecordError,
  // UsageError. `options` must live as long as the session.
  explicit Session(const CliOptions& options);

  const CliOptions& options() const { return options_; }

  // The command's input as it can be read, which is a copy when the user has named a pipe or "-".
  const std::filesystem::path& input() const { return input_.path(); }
  bool input_was_copied() const { return input_.was_copied(); }

  const Settings& settings() const { return settings_; }

  // Whether --set has set the option of this name in this run.
  bool has_set(std::string_view name) const;
  const std::filesystem::path& folder() const { return folder_.path; }

  // The folder for commands that write into it: the user's copy, made now if need be.
  std::filesystem::path writable_folder() const { return tobarine::writable_folder(folder_); }

  // Every command holds all files that it will write against what it reads, and the trace log
  // against them, before it writes. Throws UsageError.
  void will_write(const std::vector<std::filesystem::path>& outputs) const;

  // For files that no run reports on: standard error tells of one that was renamed.
  KeepRule keep_rule() const;

  void trace(std::string_view line) { trace_.line(line); }

  ConversionTables conversion_tables();

 private:
  const CliOptions& options_;
  ProgramFolder folder_;
  ReadableInput input_;
  Settings settings_;
  TraceLog trace_;
};

}  // namespace tobarine
