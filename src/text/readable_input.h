// An input that can be opened as often as need be, whatever the user has named.
#pragma once

#include <filesystem>
#include <optional>
#include <vector>

#include "text/temporary_file.h"

namespace tobarine {

class ReadableInput {
 public:
  // A regular file is read where it is. "-" (standard input), a pipe or a device is copied once to
  // a scratch file in the first of the folders that can be written. What is not there is left to
  // the reader to tell. Throws FileError.
  ReadableInput(const std::filesystem::path& given,
                const std::vector<std::filesystem::path>& folders);

  const std::filesystem::path& path() const { return path_; }
  bool was_copied() const { return copy_.has_value(); }

 private:
  std::optional<ScratchFile> copy_;
  std::filesystem::path path_;
};

// Writes a file's bytes to standard output. Throws FileError.
void copy_to_standard_output(const std::filesystem::path& file);

}  // namespace tobarine
