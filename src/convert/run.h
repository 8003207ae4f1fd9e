// What all runs share: output paths and what a run asks of its surroundings.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <string_view>

#include "text/error.h"

namespace tobarine {

// The input path up to and including its first ".", then the extension; a path without a dot gets
// "." and the extension. The first dot is meant, even when it stands in a folder's name: the output
// has always been found there. The path is made absolute first.
std::filesystem::path output_path(const std::filesystem::path& input, std::string_view extension);

// Throws UsageError when the output is the input, under whatever name.
void refuse_same_file(const std::filesystem::path& input, const std::filesystem::path& output);

// Thrown where the user's wish to stop is seen; the runs turn it into `stopped_by`.
class StopRequested : public Error {
 public:
  StopRequested() : Error("中止しました。そこまでに書いた交信は残っています") {}
};

// May be empty.
struct RunContext {
  // Called now and then with the done part, 0 .. 1. False: the run is to stop.
  std::function<bool(double)> progress;

  // Calls `progress` at every few thousandth contact. Throws StopRequested.
  void tell(std::size_t contacts, std::uint64_t bytes_done, std::uint64_t bytes_all) const;

  // For a part of the run, which is `from` .. `to` of the whole.
  RunContext part(double from, double to) const;
};

}  // namespace tobarine
