// Files written by the program: a buffered file in CP932, and whole files replaced at one stroke.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "text/keep_rule.h"
#include "text/open_file.h"

namespace tobarine {

// Creates (or overwrites) a file and holds it: no other run can write into it meanwhile. What was
// put stays in the file whatever happens later: the destructor writes what is still buffered. Call
// close() to learn of a failure of that last write. When a write fails the file is cut back to the
// end of its last whole record.
class OutputFile {
 public:
  // What stands there and may not go is renamed first; the new file has its mode then, and a
  // symbolic link stays one. Throws FileError.
  explicit OutputFile(const std::filesystem::path& path, const KeepRule& rule = {});
  ~OutputFile();
  OutputFile(const OutputFile&) = delete;
  OutputFile& operator=(const OutputFile&) = delete;

  // Bytes to write next. Append CP932 bytes, then call end_record() when they end one: a line, a
  // contact, the file's header.
  std::string& buffer() { return buffer_; }
  void end_record() {
    ends_.push_back(buffer_.size());
    if (buffer_.size() >= kFull) flush();
  }
  // Those in the file and in the buffer; after a failed write those that are in the file.
  std::size_t records() const { return records_ + ends_.size(); }

  void flush();       // the buffer ends a record; throws FileError
  void reach_disk();  // what was flushed outlives a power failure; throws FileError
  void close();       // throws FileError, also when somebody has removed the file meanwhile

 private:
  static constexpr std::size_t kFull = std::size_t{1} << 18;
  void cut_back(std::size_t written);

  std::filesystem::path path_;
  FileHandle file_;
  bool visible_ = false;  // under its path
  std::string buffer_;
  std::vector<std::size_t> ends_;  // of the records in the buffer
  std::uint64_t bytes_ = 0;        // in the file
  std::size_t records_ = 0;        // in the file
};

// Writes these bytes over the start of a file that exists; what stands behind them stays. Throws
// FileError.
void overwrite_start_of_file(const std::filesystem::path& path, std::string_view bytes);

// Replaces (or creates) the file with these bytes: written beside it under a name of its own, then
// renamed, so that the file is whole or as it was whatever happens. It keeps its mode; a symbolic
// link stays one. What may not go is renamed first. A device or a pipe is written to. Throws
// FileError.
void replace_file(const std::filesystem::path& path, std::string_view bytes,
                  const KeepRule& rule = {});

// The same for a text of lines ended by LF: written as CP932 with CR LF.
void replace_text_file(const std::filesystem::path& path, std::string_view utf8,
                       const KeepRule& rule = {});

}  // namespace tobarine
