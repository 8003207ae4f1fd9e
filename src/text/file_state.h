// What a file is at a moment, to learn whether somebody changes it while it is read.
#pragma once

#include <cstdint>
#include <cstdio>
#include <filesystem>

namespace tobarine {

struct FileState {
  std::uint64_t size = 0;      // bytes; 0 for what has no size (a pipe)
  std::int64_t changed = 0;    // when it was last written, in the system's units
  std::uint64_t identity = 0;  // of the file behind the name; 0 where the system tells none

  bool operator==(const FileState&) const = default;
};

// Of an open file / of what stands under a path now. All zero for anything but a regular file, and
// when there is none.
FileState state_of(std::FILE* file);
FileState state_of(const std::filesystem::path& path);

// For runs that open their input more than once: throws FileError when the file is no longer the
// one that it was when the watch began.
class InputWatch {
 public:
  explicit InputWatch(const std::filesystem::path& input)
      : input_(input), begun_(state_of(input)) {}
  void check() const;

 private:
  std::filesystem::path input_;
  FileState begun_;
};

// The reason for a failure of a read whose file has changed meanwhile.
extern const char* const kChangedWhileRead;

}  // namespace tobarine
