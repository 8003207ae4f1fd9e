// UTF-8 texts seen as characters (code points). Malformed bytes count as one character each.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
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

// Writes the character to `out` (room for four bytes) and advances it.
inline void put_utf8(char32_t c, char*& out) {
  const auto put = [&out](char32_t byte) { *out++ = static_cast<char>(byte); };
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

template <typename Word>
Word load_word(const char* bytes) {
  Word word;
  std::memcpy(&word, bytes, sizeof word);
  return word;
}

// The high bits of the bytes that a Word of them holds.
template <typename Word>
Word high_bits(const char* bytes) {
  return load_word<Word>(bytes) & static_cast<Word>(0x8080808080808080U);
}

// The length of the leading run of ASCII bytes.
inline std::size_t ascii_prefix(std::string_view text) {
  std::size_t i = 0;
  for (; i + 8 <= text.size(); i += 8) {
    if (high_bits<std::uint64_t>(text.data() + i) != 0) break;
  }
  while (i < text.size() && static_cast<unsigned char>(text[i]) < 0x80) ++i;
  return i;
}

// Asked of every field: words instead of bytes, the last one overlapping the one before.
inline bool is_ascii(std::string_view text) {
  const char* const bytes = text.data();
  const std::size_t n = text.size();
  if (n >= 8) {
    auto high = high_bits<std::uint64_t>(bytes + n - 8);
    for (std::size_t i = 0; i + 8 < n; i += 8) high |= high_bits<std::uint64_t>(bytes + i);
    return high == 0;
  }
  if (n >= 4) {
    return (high_bits<std::uint32_t>(bytes) | high_bits<std::uint32_t>(bytes + n - 4)) == 0;
  }
  return n == 0 || ((text[0] | text[n / 2] | text[n - 1]) & 0x80) == 0;
}

// Whether every byte is ASCII and none a control character (00-1F), in the same way.
inline bool is_plain(std::string_view text) {
  const auto strange = []<typename Word>(Word word) {
    const Word less = word - static_cast<Word>(0x2020202020202020U);  // a byte below 20 goes under
    return (word | less) & static_cast<Word>(0x8080808080808080U);
  };
  const char* const bytes = text.data();
  const std::size_t n = text.size();
  if (n >= 8) {
    auto found = strange(load_word<std::uint64_t>(bytes + n - 8));
    for (std::size_t i = 0; i + 8 < n; i += 8) {
      found |= strange(load_word<std::uint64_t>(bytes + i));
    }
    return found == 0;
  }
  if (n >= 4) {
    return (strange(load_word<std::uint32_t>(bytes)) |
            strange(load_word<std::uint32_t>(bytes + n - 4))) == 0;
  }
  const auto fits = [&](std::size_t i) { return bytes[i] >= ' '; };  // 80-FF may be negative
  return n == 0 || (is_ascii(text) && fits(0) && fits(n / 2) && fits(n - 1));
}

bool is_valid_utf8(std::string_view text);

// The number of characters.
std::size_t char_count(std::string_view text);

// The bytes of the first `count` characters of a text.
std::size_t bytes_of_chars(std::string_view text, std::size_t count);

// The first / last `count` characters, or all when there are fewer.
inline std::string_view left_chars(std::string_view text, std::size_t count) {
  const std::string_view head = text.substr(0, count);
  return is_ascii(head) ? head : text.substr(0, bytes_of_chars(text, count));
}
std::string_view right_chars(std::string_view text, std::size_t count);

// Up to `count` characters from the character at `start` (counted from 0) on.
inline std::string_view mid_chars(std::string_view text, std::size_t start, std::size_t count) {
  return left_chars(text.substr(left_chars(text, start).size()), count);
}

}  // namespace tobarine
