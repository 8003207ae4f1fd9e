// The trace log: a text file (CP932, CR LF) in which a run of the program notes its steps.
#pragma once

#include <ctime>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

#include "text/output_file.h"

namespace tobarine {

// "20261115_234100.txt" for that local date and time.
std::string trace_log_name(const std::tm& local_time);

inline constexpr std::string_view kTraceHeading = "Tobarine_log.txt";  // its first line

class TraceLog {
 public:
  // Creates the file with its heading; one that is there goes as the rule has it. Throws FileError.
  void open(const std::filesystem::path& file, const KeepRule& rule = {});
  bool is_open() const { return file_ != nullptr; }

  // Appends a line (UTF-8). Without an open log, and when the disk refuses it, nothing happens: the
  // log must never stop the work it tells of.
  void line(std::string_view text);

 private:
  std::unique_ptr<OutputFile> file_;
};

}  // namespace tobarine
