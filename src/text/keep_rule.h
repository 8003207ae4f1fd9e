// What becomes of a file that stands where an output is to be written: what the user may still need
// is renamed before, never replaced.
#pragma once

#include <ctime>
#include <filesystem>
#include <functional>
#include <string_view>

namespace tobarine {

struct KeepRule {
  // Whether this file may go: the program has written it and can do so again. Without a function
  // every file may.
  std::function<bool(const std::filesystem::path& file)> may_go;
  std::function<std::tm()> now;  // local time; without it the new name bears no date
  // Called when a file was renamed.
  std::function<void(const std::filesystem::path& file, const std::filesystem::path& backup)> told;
};

// Whether the file is there and begins with these bytes.
bool begins_with(const std::filesystem::path& file, std::string_view bytes);

// Whether the file would be renamed: it is there, holds something, and may not go.
bool is_kept(const std::filesystem::path& file, const KeepRule& rule);

// Renames it to "NAME.YYYYMMDD-HHMMSS.bak" beside it ("...-2.bak" when that is taken) and returns
// the new path. `real` is no symbolic link. Throws FileError; the file is as it was then.
std::filesystem::path move_aside(const std::filesystem::path& real, const KeepRule& rule);

}  // namespace tobarine
