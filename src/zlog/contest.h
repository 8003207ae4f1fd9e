// What the header of a .ZLO log tells: the contest, and the zone of the times.
#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace tobarine {

struct ContestInfo {
  std::string name;          // UTF-8, without blanks around; empty when the log does not tell
  bool is_dx = false;        // the name is one of the DX contests listed here
  std::size_t contacts = 0;  // by the file's length
  std::optional<char> zone;  // 'U' (UTC) or 'J' (JST); nothing: the header does not say for certain
};

// From the bytes of the header record; `contacts` stays 0.
ContestInfo contest_of(std::span<const unsigned char> header);

// Throws FileError.
ContestInfo read_contest(const std::filesystem::path& zlo);

// The place of a name in the list of DX contests, from 0; compared exactly.
std::optional<std::size_t> dx_contest_index(std::string_view name);

}  // namespace tobarine
