// Temporary files: for this program's user only, and gone when their owner is.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "text/open_file.h"

namespace tobarine {

// A file "NAME.tobarine-PROCESS-NUMBER.tmp", which nobody else may read.
class TemporaryFile {
 public:
  // Creates it, empty, in the first of the folders that can be written, and removes what runs that
  // were killed have left there. Throws FileError when none can.
  TemporaryFile(const std::vector<std::filesystem::path>& folders, std::string_view name);
  ~TemporaryFile();
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;

  const std::filesystem::path& path() const { return path_; }

  // It will have the mode of that file, when that is there, instead of the one that new files have.
  void take_mode_of(const std::filesystem::path& file);

  // Takes its mode and the place of `file`, which others see as it was or as it is now, never half;
  // a symbolic link stays one. Throws FileError; the file is as it was then.
  void replace(const std::filesystem::path& file);

 private:
  bool create(const std::filesystem::path& folder, std::string_view name);

  std::filesystem::path path_;
  std::filesystem::perms final_mode_ = std::filesystem::perms::none;  // once it has a place
};

// A file for what a run must put aside. Where the system allows it has no name in any folder, so
// that nothing is left of it whatever happens.
class ScratchFile {
 public:
  // As TemporaryFile.
  ScratchFile(const std::vector<std::filesystem::path>& folders, std::string_view name);

  // To write to and read from, as often as need be.
  const std::filesystem::path& path() const { return path_; }

 private:
  TemporaryFile file_;
  FileHandle held_;
  std::filesystem::path path_;
};

// "NAME.tobarine-PROCESS-NUMBER.tmp", another at each call: for a file or a folder of this process.
std::string temporary_name(std::string_view name);

// Removes what this user's runs that are no more have left under such names, files and folders.
// What cannot be removed stays.
void remove_leftovers(const std::filesystem::path& folder);

}  // namespace tobarine
