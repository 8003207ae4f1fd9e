#include "text/printable.h"

#include <algorithm>
#include <array>

#include "text/cp932.h"
#include "text/utf8.h"

namespace tobarine {
namespace {

constexpr char32_t kPictures = 0x2400;  // of the control characters 00 to 1F
constexpr char32_t kDelete = 0x7F;
constexpr char32_t kPictureOfDelete = 0x2421;
constexpr char32_t kUnknown = 0xFFFD;

struct Range {
  char32_t first;
  char32_t last;
};
// The other controls, what turns the direction of writing, ends of line and paragraph, the byte
// order mark, and bytes that were no CP932.
constexpr Range kHidden[] = {
    {0x80, 0x9F},
    {0x061C, 0x061C},
    {0x200E, 0x200F},
    {0x2028, 0x202E},
    {0x2066, 0x2069},
    {0xFEFF, 0xFEFF},
    {kInvalidByteBase, kInvalidByteBase + 0xFF},
};

char32_t shown(const Utf8Char& c) {
  if (!c.valid) return kUnknown;
  if (c.code_point < 0x20) return kPictures + c.code_point;
  if (c.code_point == kDelete) return kPictureOfDelete;
  for (const Range& range : kHidden) {
    if (c.code_point >= range.first && c.code_point <= range.last) return kUnknown;
  }
  return c.code_point;
}

void add_printable(std::string_view text, bool keep_tabs, std::string& result) {
  while (!text.empty()) {
    const Utf8Char c = next_utf8(text);
    text.remove_prefix(c.size);
    std::array<char, 4> bytes{};
    char* end = bytes.data();
    put_utf8(keep_tabs && c.code_point == '\t' ? c.code_point : shown(c), end);
    result.append(bytes.data(), end);
  }
}

}  // namespace

std::string printable(std::string_view text) {
  const auto plain = [](char c) { return c >= ' ' && c != static_cast<char>(kDelete); };
  if (std::ranges::all_of(text, plain)) return std::string(text);  // nearly always
  std::string result;
  result.reserve(text.size());
  add_printable(text, false, result);
  return result;
}

std::string printable_lines(std::string_view text) {
  std::string result;
  result.reserve(text.size());
  for (;;) {
    const std::size_t end = text.find('\n');
    std::string_view line = text.substr(0, end);
    if (end != std::string_view::npos && line.ends_with('\r')) line.remove_suffix(1);
    add_printable(line, true, result);
    if (end == std::string_view::npos) return result;
    result += '\n';
    text.remove_prefix(end + 1);
  }
}

}  // namespace tobarine
