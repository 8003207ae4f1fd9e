#include "text/utf8.h"

namespace tobarine {
namespace {

bool is_continuation(char c) {
  return (static_cast<unsigned char>(c) & 0xC0) == 0x80;
}

}  // namespace

std::size_t bytes_of_chars(std::string_view text, std::size_t count) {
  std::size_t bytes = 0;
  for (; count > 0 && bytes < text.size(); --count) bytes += next_utf8(text.substr(bytes)).size;
  return bytes;
}

Utf8Char next_utf8(std::string_view text) {
  const auto lead = static_cast<unsigned char>(text[0]);
  if (lead < 0x80) return {lead, 1, true};
  if (lead >= 0xE1 && lead <= 0xEC && text.size() >= 3 && is_continuation(text[1]) &&
      is_continuation(text[2])) {  // nearly all Japanese text
    const char32_t c = (lead & 0x0FU) << 12 | (static_cast<unsigned char>(text[1]) & 0x3FU) << 6 |
                       (static_cast<unsigned char>(text[2]) & 0x3FU);
    return {c, 3, true};
  }
  const Utf8Char malformed{lead, 1, false};
  const std::size_t size = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
  if (lead < 0xC2 || lead > 0xF4 || text.size() < size) return malformed;
  char32_t c = lead & (0xFFU >> (size + 1));
  for (std::size_t i = 1; i < size; ++i) {
    if (!is_continuation(text[i])) return malformed;
    c = c << 6 | (static_cast<unsigned char>(text[i]) & 0x3FU);
  }
  const bool overlong = (size == 3 && c < 0x800) || (size == 4 && c < 0x10000);
  const bool surrogate = c >= 0xD800 && c <= 0xDFFF;
  if (overlong || surrogate || c > 0x10FFFF) return malformed;
  return {c, size, true};
}

bool is_valid_utf8(std::string_view text) {
  while (!text.empty()) {
    text.remove_prefix(ascii_prefix(text));
    if (text.empty()) break;
    const Utf8Char c = next_utf8(text);
    if (!c.valid) return false;
    text.remove_prefix(c.size);
  }
  return true;
}

std::size_t char_count(std::string_view text) {
  std::size_t count = 0;
  while (!text.empty()) {
    const std::size_t run = ascii_prefix(text);
    count += run;
    text.remove_prefix(run);
    if (text.empty()) break;
    text.remove_prefix(next_utf8(text).size);
    ++count;
  }
  return count;
}

std::string_view right_chars(std::string_view text, std::size_t count) {
  if (is_ascii(text)) return text.size() <= count ? text : text.substr(text.size() - count);
  const std::size_t all = char_count(text);
  return all <= count ? text : text.substr(bytes_of_chars(text, all - count));
}

}  // namespace tobarine
