#include "text/visible.h"

#include "text/cp932.h"
#include "text/utf8.h"

namespace tobarine {
namespace {

constexpr char32_t kPictures = 0x2400;  // of the control characters from 00 on
constexpr char32_t kNoCharacter = 0xFFFD;

char32_t shown(char32_t c) {
  if (c < U' ') return kPictures + c;
  if (c == 0x7F) return 0x2421;
  const bool c1 = c >= 0x80 && c <= 0x9F;
  const bool turns =
      (c >= 0x200E && c <= 0x200F) || (c >= 0x2028 && c <= 0x202E) || (c >= 0x2066 && c <= 0x2069);
  const bool no_text = c == 0xFEFF || c >= kInvalidByteBase;
  return c1 || turns || no_text ? kNoCharacter : c;
}

std::string clean(std::string_view text, std::string_view kept) {
  std::string result;
  result.reserve(text.size());
  while (!text.empty()) {
    const Utf8Char c = next_utf8(text);
    const bool keep = c.valid && c.code_point < U' ' &&
                      kept.find(static_cast<char>(c.code_point)) != std::string_view::npos;
    const char32_t out = keep ? c.code_point : c.valid ? shown(c.code_point) : kNoCharacter;
    if (out == c.code_point) {
      result.append(text.substr(0, c.size));
    } else {
      char bytes[4];
      char* end = bytes;
      put_utf8(out, end);
      result.append(bytes, end);
    }
    text.remove_prefix(c.size);
  }
  return result;
}

}  // namespace

std::string visible(std::string_view text) {
  return clean(text, {});
}

std::string visible_lines(std::string_view text) {
  std::string result;
  for (;;) {
    const std::size_t end = text.find("\r\n");
    result += clean(text.substr(0, end), "\n\t");
    if (end == std::string_view::npos) return result;
    result += '\n';
    text.remove_prefix(end + 2);
  }
}

}  // namespace tobarine
