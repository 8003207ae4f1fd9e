// What is thrown at the program: one target a reader, one a run. A target gets the bytes of a file
// and ends the process with a message when a promise of the program does not hold; a failure that
// is told as an `Error` is an answer like any other.
#pragma once

#include <array>
#include <filesystem>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tobarine::fuzz {

struct Target {
  std::string_view name;
  void (*run)(std::string_view bytes);
  // Files that the corpus begins with beside those in fuzz/corpus/NAME; empty: none.
  std::array<std::string_view, 2> seeds = {};
};

// The readers of logs, those of today's zLog, those of reference files, and whole runs.
std::span<const Target> log_targets();
std::span<const Target> zlog_targets();
std::span<const Target> reference_targets();
std::span<const Target> run_targets();
std::span<const Target> window_targets();

std::vector<Target> all_targets();

// The one place a target's files stand in; a target is run in one thread.
std::filesystem::path scratch_path(std::string_view name);
std::filesystem::path scratch_file(std::string_view name, std::string_view bytes);
std::string bytes_of(const std::filesystem::path& path);

// Ends the process when a promise does not hold.
void require(bool holds, const char* promise);

}  // namespace tobarine::fuzz
