// Loading and saving of a text file that is edited by hand, in CP932.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace tobarine {

class FileEditor {
 public:
  // Reads the whole file. Throws FileError, also when it is empty.
  explicit FileEditor(std::filesystem::path file);

  const std::filesystem::path& file() const { return file_; }
  std::string caption() const;  // the path and a blank

  // As UTF-8, lines ended by LF; what stands for an invalid byte is written back as that byte.
  const std::string& text() const { return text_; }

  struct Saved {
    std::size_t lacking = 0;    // characters that CP932 lacks, written as "?"
    std::uintmax_t behind = 0;  // bytes of the old content behind the text's end
  };

  // Writes the text over the file, from its first byte on, with the line ends that the file had.
  // The file is never shortened: what stood behind the end of a shorter text stays there. This is
  // how saving has always worked here. Throws FileError.
  Saved save(std::string_view text);

  // Writes a file that holds the text and nothing else, in place of one of that name if there is
  // one; it is the edited file from now on. Throws FileError.
  Saved save_as(const std::filesystem::path& file, std::string_view text);

 private:
  std::string with_line_ends(std::string_view text) const;

  std::filesystem::path file_;
  std::string text_;
  std::vector<bool> crlf_;  // of each line end of text_
};

}  // namespace tobarine
