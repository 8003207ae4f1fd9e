// Files written by the program: a buffered file in CP932, and whole files replaced at one stroke.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>

#include "text/open_file.h"

namespace tobarine {

// Creates (or overwrites) a file. What was put stays in the file whatever happens later: the
// destructor writes what is still buffered. Call close() to learn of a failure of that last write.
class OutputFile {
 public:
  explicit OutputFile(const std::filesystem::path& path);  // throws FileError
  ~OutputFile();
  OutputFile(const OutputFile&) = delete;
  OutputFile& operator=(const OutputFile&) = delete;

  // Bytes to write next. Append CP932 bytes, then call flush_if_full().
  std::string& buffer() { return buffer_; }
  void flush_if_full() {
    if (buffer_.size() >= kFull) flush();
  }
  void flush();       // throws FileError
  void reach_disk();  // what was flushed outlives a power failure; throws FileError
  void close();       // throws FileError, also when somebody has removed the file meanwhile

 private:
  static constexpr std::size_t kFull = std::size_t{1} << 18;
  std::filesystem::path path_;
  FileHandle file_;
  bool visible_ = false;  // under its path
  std::string buffer_;
};

// Writes these bytes over the start of a file that exists; what stands behind them stays. Throws
// FileError.
void overwrite_start_of_file(const std::filesystem::path& path, std::string_view bytes);

// Replaces (or creates) the file with these bytes: written beside it under a name of its own, then
// renamed, so that the file is whole or as it was whatever happens. Throws FileError.
void replace_file(const std::filesystem::path& path, std::string_view bytes);

// The same for a text of lines ended by LF: written as CP932 with CR LF.
void replace_text_file(const std::filesystem::path& path, std::string_view utf8);

}  // namespace tobarine
