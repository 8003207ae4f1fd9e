// What all runs share: output paths and what a run asks of its surroundings.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <string_view>

namespace tobarine {

// The input path up to and including its first ".", then the extension; a path without a dot gets
// "." and the extension. The first dot is meant, even when it stands in a folder's name: the output
// has always been found there. The path is made absolute first.
std::filesystem::path output_path(const std::filesystem::path& input, std::string_view extension);

// Throws UsageError when the output is the input, under whatever name.
void refuse_same_file(const std::filesystem::path& input, const std::filesystem::path& output);

// May be empty.
struct RunContext {
  std::function<void(double)> progress;  // called now and then with the done part, 0 .. 1

  // Calls `progress` at every few thousandth contact.
  void tell(std::size_t contacts, std::uint64_t bytes_done, std::uint64_t bytes_all) const;

  // For a part of the run, which is `from` .. `to` of the whole.
  RunContext part(double from, double to) const;
};

}  // namespace tobarine
