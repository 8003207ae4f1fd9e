// UTF-8 texts seen as characters (code points). Malformed bytes count as one character each.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tobarine {

struct Utf8Char {
  char32_t code_point;
  std::size_t size;  // bytes, 1 .. 4
  bool valid;        // false: a malformed byte; code_point is that byte
};

// The first character of `text`, which must not be empty.
Utf8Char next_utf8(std::string_view text);

void append_utf8(char32_t code_point, std::string& text);

// The length of the leading run of ASCII bytes.
std::size_t ascii_prefix(std::string_view text);
bool is_ascii(std::string_view text);
bool is_valid_utf8(std::string_view text);

// The number of characters.
std::size_t char_count(std::string_view text);

// The first / last `count` characters, or all when there are fewer.
std::string_view left_chars(std::string_view text, std::size_t count);
std::string_view right_chars(std::string_view text, std::size_t count);

// Up to `count` characters from the character at `start` (counted from 0) on.
std::string_view mid_chars(std::string_view text, std::size_t start, std::size_t count);

}  // namespace tobarine
