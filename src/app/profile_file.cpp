#include "app/profile_file.h"

#include "text/input_file.h"
#include "text/output_file.h"
#include "text/strings.h"
#include "text/utf8.h"

namespace tobarine {
namespace {

// The profile calls take tabs for blanks too.
std::string_view strip(std::string_view text) {
  const std::size_t first = text.find_first_not_of(" \t");
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

bool is_quoted(std::string_view value) {
  return value.size() >= 2 && value.front() == value.back() &&
         (value.front() == '"' || value.front() == '\'');
}

bool is_section_line(std::string_view line) {
  return strip(line).starts_with('[');
}

std::string_view section_name(std::string_view line) {
  line = strip(line);
  return strip(line.substr(1, line.find(']') - 1));
}

}  // namespace

ProfileFile::ProfileFile(const std::filesystem::path& path) : lines_(read_text_lines(path)) {}

std::size_t ProfileFile::find_section(std::string_view section) const {
  for (std::size_t i = 0; i < lines_.size(); ++i) {
    if (is_section_line(lines_[i]) && equal_ignoring_case(section_name(lines_[i]), section)) {
      return i;
    }
  }
  return kNone;
}

std::size_t ProfileFile::section_end(std::size_t section_line) const {
  std::size_t i = section_line + 1;
  while (i < lines_.size() && !is_section_line(lines_[i])) ++i;
  return i;
}

std::size_t ProfileFile::find_key(std::size_t section_line, std::string_view key) const {
  if (section_line == kNone) return kNone;
  const std::size_t end = section_end(section_line);
  for (std::size_t i = section_line + 1; i < end; ++i) {
    const std::string_view line = strip(lines_[i]);
    const std::size_t equals = line.find('=');
    if (line.starts_with(';') || equals == std::string_view::npos) continue;
    if (equal_ignoring_case(strip(line.substr(0, equals)), key)) return i;
  }
  return kNone;
}

std::string ProfileFile::get(std::string_view section, std::string_view key,
                             std::size_t longest) const {
  const std::size_t at = find_key(find_section(section), key);
  if (at == kNone) return {};
  const std::string_view line = lines_[at];
  std::string_view value = strip(line.substr(line.find('=') + 1));
  if (is_quoted(value)) value = value.substr(1, value.size() - 2);
  value = value.substr(0, value.find_first_of(std::string_view("\0\r", 2)));
  return std::string(left_chars(value, longest));
}

void ProfileFile::set(std::string_view section, std::string_view key, std::string_view value) {
  const std::size_t section_line = find_section(section);
  if (const std::size_t at = find_key(section_line, key); at != kNone) {
    lines_[at].replace(lines_[at].find('=') + 1, std::string::npos, value);
    return;
  }
  const std::string line = std::string(key) + "=" + std::string(value);
  if (section_line == kNone) {
    lines_.push_back("[" + std::string(section) + "]");
    lines_.push_back(line);
    return;
  }
  std::size_t at = section_end(section_line);
  while (at > section_line + 1 && strip(lines_[at - 1]).empty()) --at;
  lines_.insert(lines_.begin() + static_cast<std::ptrdiff_t>(at), line);
}

void ProfileFile::save(const std::filesystem::path& path) const {
  std::string text;
  for (const std::string& line : lines_) text += line + "\n";
  replace_text_file(path, text);
}

}  // namespace tobarine
