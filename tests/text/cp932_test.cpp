#include "text/cp932.h"

#include <gtest/gtest.h>
#include <iconv.h>
#include <map>
#include <string>

#include "text/utf8.h"

namespace tobarine {
namespace {

// The system's own converter, for comparison. Empty when it refuses the bytes.
class Iconv {
 public:
  Iconv(const char* to, const char* from) : handle_(iconv_open(to, from)) {}
  ~Iconv() { iconv_close(handle_); }
  Iconv(const Iconv&) = delete;
  Iconv& operator=(const Iconv&) = delete;

  std::string operator()(std::string text) const {
    std::string out(16, '\0');
    char* from = text.data();
    std::size_t left = text.size();
    char* to = out.data();
    std::size_t room = out.size();
    iconv(handle_, nullptr, nullptr, nullptr, nullptr);
    if (iconv(handle_, &from, &left, &to, &room) != 0 || left != 0) return {};
    out.resize(out.size() - room);
    return out;
  }

 private:
  iconv_t handle_;
};

// Where the system's table differs from Windows, which ours follows: four single bytes that Windows
// decodes and the system refuses, and "~" and "\" alike in both.
bool is_known_difference(const std::string& bytes) {
  return bytes == "\xA0" || bytes == "\xFD" || bytes == "\xFE" || bytes == "\xFF" ||
         bytes == "\x80";
}

TEST(Cp932, DecodesEveryByteAndPairAsTheSystemDoes) {
  const Iconv system("UTF-8", "CP932");
  int compared = 0;
  const auto compare = [&](const std::string& bytes) {
    if (is_known_difference(bytes)) return;
    const std::string expected = system(bytes);
    std::string decoded;
    const std::size_t invalid = decode_cp932(bytes, decoded);
    ++compared;
    if (expected.empty()) {
      EXPECT_GT(invalid, 0U) << std::hex << (bytes[0] & 0xFF) << ' ' << (bytes.back() & 0xFF);
    } else {
      EXPECT_EQ(decoded, expected) << std::hex << (bytes[0] & 0xFF) << (bytes.back() & 0xFF);
    }
  };
  for (int byte = 1; byte < 0x100; ++byte) {
    const std::string single(1, static_cast<char>(byte));
    compare(single);
    if (byte < 0x81 || (byte > 0x9F && byte < 0xE0) || byte > 0xFC) continue;
    for (int trail = 1; trail < 0x100; ++trail) compare(single + static_cast<char>(trail));
  }
  EXPECT_GT(compared, 15000);
}

TEST(Cp932, EncodesEveryCharacterAsTheSystemDoes) {
  const Iconv system("CP932", "UTF-8");
  for (char32_t c = 1; c < 0x10000; ++c) {
    if (c >= 0xD800 && c <= 0xDFFF) continue;
    std::string utf8(4, '\0');
    char* end = utf8.data();
    put_utf8(c, end);
    utf8.resize(static_cast<std::size_t>(end - utf8.data()));
    const std::string expected = system(utf8);
    if (expected.empty()) continue;
    EXPECT_EQ(to_cp932(utf8), expected) << std::hex << static_cast<unsigned>(c);
  }
}

TEST(Cp932, SingleBytesOfWindows) {
  EXPECT_EQ(from_cp932("\x80\xA0\xFD\xFE\xFF"), "\u0080\u00A0\uF8F1\uF8F2\uF8F3");
}

TEST(Cp932, MapsLikeWindowsWhereTablesDiffer) {
  EXPECT_EQ(from_cp932("\x81\x60\x81\x7C\x81\x61"), "～－∥");
  EXPECT_EQ(to_cp932("\u301C\u2212\u2016\u00A5\u2014"), "\x81\x60\x81\x7C\x81\x61\x5C\x81\x5C");
  EXPECT_EQ(to_cp932("髙﨑∵①㈱"), "\xFB\xFC\xFA\xB1\x81\xE6\x87\x40\x87\x8A");
}

// Any bytes come back as they were, except that a character that stands twice in the code page is
// written from its first place.
TEST(Cp932, EveryPairSurvivesARoundTrip) {
  std::map<std::string, std::string> first_place;
  for (int lead = 0x80; lead < 0x100; ++lead) {
    for (int trail = 0; trail < 0x100; ++trail) {
      const std::string bytes{static_cast<char>(lead), static_cast<char>(trail)};
      const std::string back = to_cp932(from_cp932(bytes));
      if (back == bytes) continue;
      EXPECT_EQ(from_cp932(back), from_cp932(bytes));
      const bool doubled = lead == 0x87 || lead == 0xED || lead == 0xEE || lead >= 0xFA;
      EXPECT_TRUE(doubled) << std::hex << lead << ' ' << trail;
    }
  }
}

TEST(Cp932, InvalidBytesAreCountedAndKept) {
  std::string text;
  EXPECT_EQ(decode_cp932("A\x81\x20\x85\x40Z\x82", text), 3U);
  EXPECT_EQ(char_count(text), 7U);
  EXPECT_EQ(to_cp932(text), "A\x81\x20\x85\x40Z\x82");
  EXPECT_EQ(cp932_length(text), 7U);
  EXPECT_FALSE(has_full_width(text));
}

TEST(Cp932, WhatItLacksBecomesAQuestionMarkAndIsCounted) {
  std::string bytes;
  EXPECT_EQ(encode_cp932("aé한\xFF\U0001F600b", bytes), 4U);
  EXPECT_EQ(bytes, "a????b");
  EXPECT_EQ(cp932_length("aéあｱ"), 5U);
}

}  // namespace
}  // namespace tobarine
