// A temporary file under a name of its own, gone when its owner is.
#pragma once

#include <filesystem>
#include <string_view>
#include <vector>

namespace tobarine {

class TemporaryFile {
 public:
  // Creates an empty file "NAME-....tmp" in the first of the folders that can be written. Throws
  // FileError when none can.
  TemporaryFile(const std::vector<std::filesystem::path>& folders, std::string_view name);
  ~TemporaryFile();
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;

  const std::filesystem::path& path() const { return path_; }

  // Gives it the mode of that file, when that is there.
  void take_mode_of(const std::filesystem::path& file);

  // Takes the place of `file`, which others see as it was or as it is now, never half; a symbolic
  // link stays one. Throws FileError; the file is as it was then.
  void replace(const std::filesystem::path& file);

 private:
  std::filesystem::path path_;
};

}  // namespace tobarine
