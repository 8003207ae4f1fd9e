// A file opened for reading, and its lines. The file is never opened for writing.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "text/file_state.h"
#include "text/open_file.h"

namespace tobarine {

// Opens for reading; throws FileError (no such file, a folder, no permission).
class InputFile {
 public:
  // Reading begins at the byte `offset`.
  explicit InputFile(const std::filesystem::path& path, std::uint64_t offset = 0);

  // Reads up to `room` bytes; fewer only at the end of the file. Throws FileError, also when the
  // file has changed by then: somebody writes it while it is read.
  std::size_t read(char* buffer, std::size_t room);

  const std::filesystem::path& path() const { return path_; }
  std::uint64_t bytes_read() const { return bytes_read_; }
  std::uint64_t size() const { return begun_.size; }  // bytes; 0 for what has no size (a pipe)

 private:
  std::filesystem::path path_;
  FileHandle file_;
  std::uint64_t offset_;
  std::uint64_t bytes_read_ = 0;
  FileState begun_;
};

// The bytes of a file through one buffer, as text readers see them: one 1A byte at the very end
// (the end mark of older systems) does not count. A unit (line or record) longer than kLongestLine
// is refused: no log has one, and memory stays bounded.
class ByteReader {
 public:
  static constexpr std::size_t kLongestLine = std::size_t{1} << 20;

  explicit ByteReader(const std::filesystem::path& path, std::uint64_t offset = 0);

  // The bytes not yet consumed; valid until the next call of fill() or consume().
  std::string_view window() const { return {buffer_.data() + begin_, end_ - begin_}; }

  // Reads more bytes behind the window; false when there are none. Throws RecordError, naming the
  // current line, when the window is already as long as a line may be; FileError on a failed read.
  bool fill();

  void consume(std::size_t bytes) {
    begin_ += bytes;
    consumed_ += bytes;
  }
  void count_lines(std::size_t lines) { line_ += lines; }

  // Passes over the UTF-8 mark where the window begins with one. For the start of a file.
  void skip_utf8_mark();

  std::size_t line() const { return line_; }            // lines counted so far
  std::uint64_t consumed() const { return consumed_; }  // bytes
  const InputFile& file() const { return file_; }

 private:
  InputFile file_;
  std::vector<char> buffer_;
  std::size_t begin_ = 0;
  std::size_t end_ = 0;
  std::size_t line_ = 0;
  std::uint64_t consumed_ = 0;
  bool at_end_ = false;
};

// Lines end with CR LF or LF; a last line without a line end counts.
class LineReader {
 public:
  // Reading begins at the byte `offset`, where a line begins.
  explicit LineReader(const std::filesystem::path& path, std::uint64_t offset = 0)
      : bytes_(path, offset) {}

  // For the start of a file, before the first line is read.
  void skip_utf8_mark() { bytes_.skip_utf8_mark(); }

  // The next line's bytes, without the line end; false at the end of the file. The view is valid
  // until the next call. Throws FileError, RecordError.
  bool next(std::string_view& line);

  std::size_t line() const { return bytes_.line(); }         // number of the line last read, from 1
  std::uint64_t start() const { return bytes_.consumed(); }  // where it begins, in bytes read
  const InputFile& file() const { return bytes_.file(); }

 private:
  ByteReader bytes_;
  std::size_t pending_ = 0;
};

// The number of lines, a last one without a line end included. Throws FileError, RecordError.
std::size_t count_lines(const std::filesystem::path& path);

// The whole file as bytes. For the small files of the program folder; one with more than `largest`
// bytes is refused with a FileError.
inline constexpr std::size_t kLargestWholeFile = std::size_t{1} << 26;  // 64 MB
std::string read_whole_file(const std::filesystem::path& path,
                            std::size_t largest = kLargestWholeFile);

// The lines of CP932 bytes, as UTF-8: one after the other until `visit` returns false, or all.
void for_each_text_line(std::string_view bytes,
                        const std::function<bool(const std::string& line)>& visit);
std::vector<std::string> text_lines(std::string_view bytes);

// The file's lines as UTF-8. For the small files of the program folder.
std::vector<std::string> read_text_lines(const std::filesystem::path& path);

// The same for a table: a line with a line end of another kind inside (a lone CR) is refused, so
// that none gets into what is made of the table. Throws RecordError then.
std::vector<std::string> read_table_lines(const std::filesystem::path& path);

}  // namespace tobarine
