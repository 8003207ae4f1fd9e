#include "text/utf8.h"

#include <cstdint>
#include <cstring>

namespace tobarine {
namespace {

bool is_continuation(char c) { return (static_cast<unsigned char>(c) & 0xC0) == 0x80; }

// The bytes of the first `count` characters.
std::size_t bytes_of_chars(std::string_view text, std::size_t count) {
  std::size_t bytes = 0;
  for (; count > 0 && bytes < text.size(); --count) bytes += next_utf8(text.substr(bytes)).size;
  return bytes;
}

}  // namespace

Utf8Char next_utf8(std::string_view text) {
  const auto lead = static_cast<unsigned char>(text[0]);
  if (lead < 0x80) return {lead, 1, true};
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

void append_utf8(char32_t c, std::string& text) {
  const auto put = [&text](char32_t byte) { text.push_back(static_cast<char>(byte)); };
  if (c < 0x80) {
    put(c);
  } else if (c < 0x800) {
    put(0xC0 | c >> 6);
    put(0x80 | (c & 0x3F));
  } else if (c < 0x10000) {
    put(0xE0 | c >> 12);
    put(0x80 | (c >> 6 & 0x3F));
    put(0x80 | (c & 0x3F));
  } else {
    put(0xF0 | c >> 18);
    put(0x80 | (c >> 12 & 0x3F));
    put(0x80 | (c >> 6 & 0x3F));
    put(0x80 | (c & 0x3F));
  }
}

std::size_t ascii_prefix(std::string_view text) {
  std::size_t i = 0;
  for (; i + 8 <= text.size(); i += 8) {
    std::uint64_t word;
    std::memcpy(&word, text.data() + i, sizeof word);
    if ((word & 0x8080808080808080U) != 0) break;
  }
  while (i < text.size() && static_cast<unsigned char>(text[i]) < 0x80) ++i;
  return i;
}

bool is_ascii(std::string_view text) { return ascii_prefix(text) == text.size(); }

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

std::string_view left_chars(std::string_view text, std::size_t count) {
  return text.substr(0, bytes_of_chars(text, count));
}

std::string_view right_chars(std::string_view text, std::size_t count) {
  const std::size_t all = char_count(text);
  return all <= count ? text : text.substr(bytes_of_chars(text, all - count));
}

std::string_view mid_chars(std::string_view text, std::size_t start, std::size_t count) {
  return left_chars(text.substr(bytes_of_chars(text, start)), count);
}

}  // namespace tobarine
