// What every command shares: the program folder, the settings of this run and the trace log.
#pragma once

#include <filesystem>
#include <string_view>

#include "app/program_folder.h"
#include "app/settings.h"
#include "app/trace_log.h"
#include "cli/options.h"
#include "convert/reference_tables.h"

namespace tobarine {

class Session {
 public:
  // Finds the program folder, reads the settings and applies --set. Nothing is written there.
  // Throws FileError, RecordError, UsageError. `options` must live as long as the session.
  explicit Session(const CliOptions& options);

  const CliOptions& options() const { return options_; }
  const Settings& settings() const { return settings_; }
  const std::filesystem::path& folder() const { return folder_.path; }

  // The folder for commands that write into it: the user's copy, made now if need be.
  std::filesystem::path writable_folder() const { return make_user_copy(folder_); }

  void trace(std::string_view line) { trace_.line(line); }

  ConversionTables conversion_tables();

 private:
  const CliOptions& options_;
  ProgramFolder folder_;
  Settings settings_;
  TraceLog trace_;
};

}  // namespace tobarine
