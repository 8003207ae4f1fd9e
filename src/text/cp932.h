// The Japanese Windows code page (CP932) to and from UTF-8, as Windows maps it: JIS X 0208, NEC row
// 13, NEC-selected and IBM extensions, user-defined characters (F040-F9FC <-> U+E000-E757), and the
// single bytes 80, A0, FD, FE, FF. Table-driven, the same on every platform and in every locale.
//
// A byte that is no valid CP932 is kept inside the program as a code point of its own (U+10FF00
// plus the byte) and written back as that same byte, so that a damaged text survives a conversion.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace tobarine {

// The code point that stands for the invalid byte 00; U+10FF80 .. U+10FFFF stand for 80 .. FF.
inline constexpr char32_t kInvalidByteBase = 0x10FF00;

// Appends `bytes` (CP932) to `utf8`. Returns the number of invalid bytes that were escaped.
std::size_t decode_cp932(std::string_view bytes, std::string& utf8);

// The most bytes of UTF-8 that one byte of CP932 can become.
inline constexpr std::size_t kUtf8PerByte = 4;

// Decodes the one character at `bytes`, which begins with a byte of 80 or above and ends before
// `end`, to `out`, and advances both. False: the byte is invalid and was escaped. For readers that
// decode while they look for other things.
bool decode_cp932_char(const char*& bytes, const char* end, char*& out);

namespace cp932_detail {
// One row of 188 code points for each lead byte from 81 on; see the table's generator.
extern const std::uint16_t kPairs[];
bool decode_rare_char(const char*& bytes, const char* end, char*& out);
}  // namespace cp932_detail

// Inline for what nearly all Japanese text consists of: lead bytes 81-9F.
inline bool decode_cp932_char(const char*& bytes, const char* end, char*& out) {
  const unsigned lead = static_cast<unsigned char>(*bytes) - 0x81U;
  if (lead <= 0x9F - 0x81 && end - bytes >= 2) {
    const unsigned trail = static_cast<unsigned char>(bytes[1]);
    if (trail >= 0x40 && trail <= 0xFC && trail != 0x7F) {
      const char32_t c = cp932_detail::kPairs[lead * 188 + trail - 0x40 - (trail > 0x7F ? 1 : 0)];
      if (c >= 0x800) {
        bytes += 2;
        out[0] = static_cast<char>(0xE0 | c >> 12);
        out[1] = static_cast<char>(0x80 | (c >> 6 & 0x3F));
        out[2] = static_cast<char>(0x80 | (c & 0x3F));
        out += 3;
        return true;
      }
    }
  }
  return cp932_detail::decode_rare_char(bytes, end, out);
}

// Appends `utf8` to `bytes` as CP932. A character that CP932 lacks becomes "?"; returns their
// number. Malformed UTF-8 counts as one such character per byte.
std::size_t encode_cp932(std::string_view utf8, std::string& bytes);

// The same to `out`, which is advanced and must have room for utf8.size() bytes.
std::size_t encode_cp932(std::string_view utf8, char*& out);

// Copies the one character at `bytes`, which should be UTF-8, as decode_cp932_char() decodes one.
bool copy_utf8_char(const char*& bytes, const char* end, char*& out);

// Appends a text that should be UTF-8; malformed bytes are escaped as decode_cp932() does. Returns
// their number.
std::size_t copy_utf8_escaping_invalid(std::string_view bytes, std::string& utf8);

// Convenience forms for short texts.
std::string from_cp932(std::string_view bytes);
std::string to_cp932(std::string_view utf8);

// The number of bytes that `utf8` takes in CP932.
std::size_t cp932_length(std::string_view utf8);

// True when something in the text stands for an invalid byte.
bool has_invalid_byte(std::string_view utf8);

// True when a character of the text takes two bytes in CP932.
bool has_full_width(std::string_view utf8);

// True when a character of the text is a half-width kana (one byte A1-DF in CP932).
bool has_half_width_kana(std::string_view utf8);

// The code point of a two-byte character, 0 when the pair is not assigned.
char32_t cp932_pair_to_unicode(std::uint8_t lead, std::uint8_t trail);

// The CP932 code (one byte, or lead * 256 + trail) of a code point; -1 when CP932 lacks it.
int cp932_from_unicode(char32_t code_point);

}  // namespace tobarine
