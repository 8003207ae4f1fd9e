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

// Makes sure that what was written is on the disk; false when that fails.
bool sync_file(std::FILE* file);

// Moves to a byte of the file; false when that fails.
bool seek_to(std::FILE* file, std::uint64_t offset);

}  // namespace tobarine
