// The start of the window program, before any window exists, as one procedure.
#pragma once

#include <ctime>
#include <filesystem>
#include <optional>
#include <string>

#include "app/settings.h"
#include "app/trace_log.h"

namespace tobarine {

struct StartUpInput {
  std::filesystem::path folder;  // the program folder
  std::string windows_folder;    // the value of WINDIR, empty where there is none
  std::tm local_time{};          // now
};

struct MessageBox {
  std::string title;
  std::string text;  // lines end with CR LF
};

// What the rest of the run needs, and what the shell must do next.
struct StartUp {
  Settings settings;
  TraceLog trace;
  std::string folder;  // ends with the separator
  std::string drive;   // the first three characters of `folder`
  std::string windows_folder;
  std::string missing_flag = "0";  // "1": reference files are missing

  // Set when reference files are missing: the shell shows it as a critical stop with one OK button
  // and ends; no settings file has been written. Otherwise it shows the main window.
  std::optional<MessageBox> stop;

  // Appends a line to the trace log while tracing is on.
  void trace_line(std::string_view text) {
    if (settings.write_trace_log == "1") trace.line(text);
  }
};

// Reads the settings, opens the trace log, checks the reference files and writes the first settings
// file, in this order. Throws FileError.
StartUp start_up(const StartUpInput& input);

}  // namespace tobarine
