// Opening files by their path, whatever characters it holds, on every platform.
#pragma once

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <memory>

namespace tobarine {

struct CloseFile {
  // Who has written closes by himself, to learn of a failure.
  void operator()(std::FILE* file) const { static_cast<void>(std::fclose(file)); }
};
using FileHandle = std::unique_ptr<std::FILE, CloseFile>;

// As fopen(): empty when it fails, and errno tells why.
FileHandle open_file(const std::filesystem::path& path, const char* mode);

// Opens a file for writing and holds it until it is closed, so that no two runs write into one
// file: it is not emptied, and it is created when it is not there (`must_be_new`: or else the call
// fails with EEXIST). Empty when it fails; errno is EBUSY when another program holds the file. A
// device or a pipe is not held.
FileHandle open_and_hold(const std::filesystem::path& path, bool must_be_new);

// Makes the file this long (bytes); false when that fails, as it does on devices and pipes.
bool cut_file(std::FILE* file, std::uint64_t size);

// From now on a write beyond the size limit of the process fails like any other write. For programs
// to call at their start.
void survive_size_limit();

// Makes sure that what was written is on the disk; false when that fails.
bool sync_file(std::FILE* file);

// Moves to a byte of the file; false when that fails.
bool seek_to(std::FILE* file, std::uint64_t offset);

}  // namespace tobarine
