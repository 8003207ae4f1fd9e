// A text file of any length, looked at line by line without keeping it in memory.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "text/input_file.h"

namespace tobarine {

class LineIndex {
 public:
  // Reads the file once and remembers where its lines stand. `visit` is called with each line's
  // bytes. Throws FileError, RecordError.
  LineIndex(std::filesystem::path file, const std::function<void(std::string_view)>& visit);

  std::size_t size() const { return lines_; }

  // The line as UTF-8, counted from 0. The file is read as UTF-8 when it begins with the UTF-8 mark
  // or is valid UTF-8 and not valid CP932, else as CP932. Throws FileError.
  std::string line(std::size_t number) const;

  // The first line from `from` on, and the last one in front of `before`, that hold the text,
  // without regard to case of ASCII letters; size() when there is none. Throws FileError.
  std::size_t find(std::string_view text, std::size_t from) const;
  std::size_t find_last(std::string_view text, std::size_t before) const;

 private:
  static constexpr std::size_t kStep = 64;  // the place of every 64th line is kept
  std::string decode(std::string_view bytes) const;
  std::string block(std::size_t from_step, std::size_t to_step) const;
  struct Wanted {
    std::string text;   // UTF-8, lower case
    std::string bytes;  // as the file holds it, lower case; empty: it may do so in several ways
  };
  Wanted wanted(std::string_view text) const;
  std::optional<std::size_t> find_in(const std::string& block, const Wanted& wanted,
                                     std::size_t from, std::size_t before, bool last) const;

  std::filesystem::path file_;
  std::vector<std::uint64_t> offsets_;
  std::uint64_t end_ = 0;  // of the file, bytes
  std::size_t lines_ = 0;
  bool utf8_ = false;
  // The lines last read, for the next question nearby.
  mutable std::vector<std::string> cached_;
  mutable std::size_t cached_from_ = 0;
};

}  // namespace tobarine
