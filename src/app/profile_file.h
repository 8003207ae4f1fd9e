// A Windows profile file ("ini"): sections in square brackets, then a line "key=value" each. What
// is written here the Windows profile calls read back, and the other way round. A file edited by
// hand keeps its order, comments, blank lines and unknown keys.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace tobarine {

class ProfileFile {
 public:
  ProfileFile() = default;
  explicit ProfileFile(const std::filesystem::path& path);  // throws FileError, RecordError

  // The value as the profile calls return it: blanks around it and one pair of quotes around the
  // whole are dropped, the rest cut to `longest` characters. Empty when there is no such key.
  // Section and key match without regard to case; the first of several counts.
  std::string get(std::string_view section, std::string_view key, std::size_t longest) const;

  // Replaces the value in its line, or adds a line at the end of the section, or a new section at
  // the end of the file. The value is written as it stands.
  void set(std::string_view section, std::string_view key, std::string_view value);

  const std::vector<std::string>& lines() const { return lines_; }

  void save(const std::filesystem::path& path) const;  // replaces the file; throws FileError

 private:
  static constexpr std::size_t kNone = static_cast<std::size_t>(-1);
  std::size_t find_section(std::string_view section) const;
  std::size_t find_key(std::size_t section_line, std::string_view key) const;
  std::size_t section_end(std::size_t section_line) const;

  std::vector<std::string> lines_;
};

}  // namespace tobarine
