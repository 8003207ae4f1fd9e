#include "text/printable.h"

#include <array>

#include "text/cp932.h"
#include "text/strings.h"
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
constexpr Range kHidden[] = {
    {0x80, 0x9F},                        // the other controls
    {0x061C, 0x061C},                    // directions of writing
    {0x200E, 0x200F}, {0x2028, 0x2029},  // ends of line and paragraph
    {0x202A, 0x202E}, {0x2066, 0x2069}, {kInvalidByteBase, kInvalidByteBase + 0xFF},
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

}  // namespace

std::string printable(std::string_view text) {
  std::string result;
  result.reserve(text.size());
  while (!text.empty()) {
    const Utf8Char c = next_utf8(text);
    text.remove_prefix(c.size);
    std::array<char, 4> bytes{};
    char* end = bytes.data();
    put_utf8(shown(c), end);
    result.append(bytes.data(), end);
  }
  return result;
}

std::string printable_lines(std::string_view text) {
  std::string result;
  bool first = true;
  for_each_piece(text, '\n', [&](std::string_view line) {
    if (!first) result += '\n';
    first = false;
    result += printable(line);
  });
  return result;
}

}  // namespace tobarine
