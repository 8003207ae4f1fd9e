#include "text/cp932.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <memory>

#include "text/utf8.h"

namespace tobarine {

const std::uint16_t cp932_detail::kPairs[] = {
#include "text/cp932_table.inc"
};

namespace {

using cp932_detail::kPairs;

constexpr int kTrails = 188;

constexpr char32_t kUserDefinedFirst = 0xE000;
constexpr char32_t kUserDefinedLast = 0xE757;

// The row of a lead byte in kPairs; -1 when the byte leads no row of the table.
int table_row(std::uint8_t lead) {
  if (lead >= 0x81 && lead <= 0x9F) return lead - 0x81;
  if (lead >= 0xE0 && lead <= 0xEF) return lead - 0xE0 + 31;
  if (lead >= 0xFA && lead <= 0xFC) return lead - 0xFA + 47;
  return -1;
}

// 0 .. 187 for a trail byte, -1 for any other byte.
int trail_index(std::uint8_t trail) {
  if (trail >= 0x40 && trail <= 0x7E) return trail - 0x40;
  if (trail >= 0x80 && trail <= 0xFC) return trail - 0x41;
  return -1;
}

std::uint8_t trail_byte(int index) {
  return static_cast<std::uint8_t>(index < 63 ? index + 0x40 : index + 0x41);
}

// Single bytes 80-FF that are characters; 0 for lead bytes.
char32_t single_byte(std::uint8_t byte) {
  if (byte == 0x80 || byte == 0xA0) return byte;
  if (byte >= 0xA1 && byte <= 0xDF) return 0xFF61 + (byte - 0xA1);
  if (byte >= 0xFD) return 0xF8F1 + (byte - 0xFD);
  return 0;
}

// Characters whose look Windows keeps although CP932 decodes to another code point.
struct LookAlike {
  char32_t code_point;
  std::uint16_t code;
};
constexpr LookAlike kLookAlikes[] = {
    {0x00A2, 0x8191},  // cent
    {0x00A3, 0x8192},  // pound
    {0x00A5, 0x5C},    // yen: the backslash of Japanese fonts
    {0x00AC, 0x81CA},  // not
    {0x2014, 0x815C},  // em dash
    {0x2016, 0x8161},  // double vertical line
    {0x203E, 0x7E},    // overline: the tilde of JIS X 0201
    {0x2212, 0x817C},  // minus
    {0x301C, 0x8160},  // wave dash
    {0xF8F0, 0xA0},
};

// Code point -> CP932 code for the whole BMP; 0 means "not in CP932".
using EncodeTable = std::array<std::uint16_t, 0x10000>;

// Several characters stand twice in CP932. Windows writes them from JIS X 0208 first, then NEC row
// 13, then the IBM extensions; the NEC-selected rows ED and EE are read and never written.
void add_rows(EncodeTable& table, std::uint8_t first_lead, std::uint8_t last_lead) {
  for (int lead = first_lead; lead <= last_lead; ++lead) {
    for (int i = 0; i < kTrails; ++i) {
      const std::uint8_t trail = trail_byte(i);
      const char32_t code_point = cp932_pair_to_unicode(static_cast<std::uint8_t>(lead), trail);
      if (code_point != 0 && table[code_point] == 0) {
        table[code_point] = static_cast<std::uint16_t>(lead << 8 | trail);
      }
    }
  }
}

std::unique_ptr<EncodeTable> make_encode_table() {
  auto table = std::make_unique<EncodeTable>();
  for (int byte = 1; byte < 0x80; ++byte) (*table)[byte] = static_cast<std::uint16_t>(byte);
  for (int byte = 0x80; byte < 0x100; ++byte) {
    if (const char32_t c = single_byte(static_cast<std::uint8_t>(byte)); c != 0) {
      (*table)[c] = static_cast<std::uint16_t>(byte);
    }
  }
  add_rows(*table, 0x81, 0x86);
  add_rows(*table, 0x88, 0x9F);
  add_rows(*table, 0xE0, 0xEC);
  add_rows(*table, 0x87, 0x87);
  add_rows(*table, 0xFA, 0xFC);
  for (const LookAlike& l : kLookAlikes) {
    if ((*table)[l.code_point] == 0) (*table)[l.code_point] = l.code;
  }
  for (char32_t c = kUserDefinedFirst; c <= kUserDefinedLast; ++c) {
    const int offset = static_cast<int>(c - kUserDefinedFirst);
    (*table)[c] =
        static_cast<std::uint16_t>((0xF0 + offset / kTrails) << 8 | trail_byte(offset % kTrails));
  }
  return table;
}

const EncodeTable& encode_table() {
  static const std::unique_ptr<EncodeTable> table = make_encode_table();
  return *table;
}

int code_in(const EncodeTable& table, char32_t code_point) {
  if (code_point == 0) return 0;
  if (code_point > 0xFFFF) {
    const bool is_byte =
        code_point >= kInvalidByteBase + 0x80 && code_point <= kInvalidByteBase + 0xFF;
    return is_byte ? static_cast<int>(code_point - kInvalidByteBase) : -1;
  }
  const std::uint16_t code = table[code_point];
  return code == 0 ? -1 : code;
}

// The first character of the text, which must not be ASCII.
bool is_two_bytes(std::string_view utf8) {
  const Utf8Char c = next_utf8(utf8);
  return c.valid && code_in(encode_table(), c.code_point) > 0xFF;
}

}  // namespace

char32_t cp932_pair_to_unicode(std::uint8_t lead, std::uint8_t trail) {
  const int index = trail_index(trail);
  if (index < 0) return 0;
  if (lead >= 0xF0 && lead <= 0xF9) return kUserDefinedFirst + (lead - 0xF0) * kTrails + index;
  const int row = table_row(lead);
  return row < 0 ? 0 : kPairs[row * kTrails + index];
}

int cp932_from_unicode(char32_t code_point) {
  return code_in(encode_table(), code_point);
}

bool cp932_detail::decode_rare_char(const char*& bytes, const char* end, char*& out) {
  const auto byte = static_cast<std::uint8_t>(*bytes);
  char32_t c = single_byte(byte);
  if (c == 0 && end - bytes >= 2) {
    c = cp932_pair_to_unicode(byte, static_cast<std::uint8_t>(bytes[1]));
    if (c != 0) ++bytes;
  }
  ++bytes;
  put_utf8(c == 0 ? kInvalidByteBase + byte : c, out);
  return c != 0;
}

std::size_t decode_cp932(std::string_view bytes, std::string& utf8) {
  std::size_t invalid = 0;
  const std::size_t before = utf8.size();
  const std::size_t run = ascii_prefix(bytes);
  utf8.append(bytes, 0, run);
  if (run == bytes.size()) return 0;
  utf8.resize(before + run + (bytes.size() - run) * kUtf8PerByte);
  char* out = utf8.data() + before + run;
  const char* end = bytes.data() + bytes.size();
  for (const char* at = bytes.data() + run; at < end;) {
    if (static_cast<unsigned char>(*at) < 0x80) {
      *out++ = *at++;
    } else if (!decode_cp932_char(at, end, out)) {
      ++invalid;
    }
  }
  utf8.resize(static_cast<std::size_t>(out - utf8.data()));
  return invalid;
}

std::size_t encode_cp932(std::string_view utf8, std::string& bytes) {
  const std::size_t before = bytes.size();
  bytes.resize(before + utf8.size());  // no character is longer in CP932 than in UTF-8
  char* out = bytes.data() + before;
  const std::size_t lacking = encode_cp932(utf8, out);
  bytes.resize(static_cast<std::size_t>(out - bytes.data()));
  return lacking;
}

std::size_t encode_cp932(std::string_view utf8, char*& out) {
  std::size_t lacking = 0;
  const EncodeTable& table = encode_table();
  while (!utf8.empty()) {
    if (const auto byte = static_cast<unsigned char>(utf8[0]); byte < 0x80) {
      *out++ = utf8[0];
      utf8.remove_prefix(1);
      continue;
    }
    const Utf8Char c = next_utf8(utf8);
    utf8.remove_prefix(c.size);
    const int code = c.valid ? code_in(table, c.code_point) : -1;
    if (code < 0) {
      *out++ = '?';
      ++lacking;
      continue;
    }
    if (code > 0xFF) *out++ = static_cast<char>(code >> 8);
    *out++ = static_cast<char>(code & 0xFF);
  }
  return lacking;
}

bool copy_utf8_char(const char*& bytes, const char* end, char*& out) {
  const Utf8Char c = next_utf8({bytes, static_cast<std::size_t>(end - bytes)});
  if (c.valid) {
    out = std::copy_n(bytes, c.size, out);
  } else {
    put_utf8(kInvalidByteBase + c.code_point, out);
  }
  bytes += c.size;
  return c.valid;
}

std::size_t copy_utf8_escaping_invalid(std::string_view bytes, std::string& utf8) {
  std::size_t invalid = 0;
  const char* at = bytes.data();
  const char* const end = at + bytes.size();
  while (at < end) {
    char copy[4];
    char* out = copy;
    if (!copy_utf8_char(at, end, out)) ++invalid;
    utf8.append(copy, out);
  }
  return invalid;
}

std::string from_cp932(std::string_view bytes) {
  std::string utf8;
  decode_cp932(bytes, utf8);
  return utf8;
}

std::string to_cp932(std::string_view utf8) {
  std::string bytes;
  encode_cp932(utf8, bytes);
  return bytes;
}

std::size_t cp932_length(std::string_view utf8) {
  std::size_t length = 0;
  while (!utf8.empty()) {
    const std::size_t run = ascii_prefix(utf8);
    length += run;
    utf8.remove_prefix(run);
    if (utf8.empty()) break;
    length += is_two_bytes(utf8) ? 2 : 1;
    utf8.remove_prefix(next_utf8(utf8).size);
  }
  return length;
}

bool has_invalid_byte(std::string_view utf8) {
  // How U+10FF80 to U+10FFFF begin, and nothing else that CP932 has.
  return utf8.find("\xF4\x8F\xBE") != std::string_view::npos ||
         utf8.find("\xF4\x8F\xBF") != std::string_view::npos;
}

bool has_half_width_kana(std::string_view utf8) {
  constexpr char32_t kFirst = 0xFF61;
  constexpr char32_t kLast = 0xFF9F;
  for (;;) {
    utf8.remove_prefix(ascii_prefix(utf8));
    if (utf8.empty()) return false;
    const Utf8Char c = next_utf8(utf8);
    if (c.code_point >= kFirst && c.code_point <= kLast) return true;
    utf8.remove_prefix(c.size);
  }
}

bool has_full_width(std::string_view utf8) {
  for (;;) {
    utf8.remove_prefix(ascii_prefix(utf8));
    if (utf8.empty()) return false;
    if (is_two_bytes(utf8)) return true;
    utf8.remove_prefix(next_utf8(utf8).size);
  }
}

}  // namespace tobarine
