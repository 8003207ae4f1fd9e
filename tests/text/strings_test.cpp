#include "text/strings.h"

#include <gtest/gtest.h>

#include "text/printable.h"
#include "text/utf8.h"

namespace tobarine {
namespace {

TEST(Strings, UpperCaseKnowsAsciiAndFullWidthLatinOnly) {
  EXPECT_EQ(upper("aZ1ａｚＡ日本ｱéя"), "AZ1ＡＺＡ日本ｱéя");
}

TEST(Strings, TrimTakesBlanksOnly) {
  EXPECT_EQ(trim("  a b "), "a b");
  EXPECT_EQ(trim("　a\t"), "　a\t");
  EXPECT_EQ(trim("   "), "");
  std::string text = "  x ";
  trim_in_place(text);
  EXPECT_EQ(text, "x");
}

TEST(Strings, NumbersAreReadFromTheStart) {
  const struct {
    const char* text;
    double number;
  } rows[] = {{"7.025", 7.025}, {"14", 14}, {"430.", 430}, {".5", 0.5}, {"10G", 10},
              {"1.2.3", 1.2},   {"abc", 0}, {"", 0},       {".", 0},    {" 7", 0},
              {"-5", 0},        {"1e3", 1}, {"00012", 12}};
  for (const auto& row : rows) EXPECT_DOUBLE_EQ(leading_number(row.text), row.number) << row.text;
  EXPECT_EQ(number_text(2024), "2024");
  EXPECT_EQ(number_text(1.5), "1.5");
  EXPECT_EQ(number_text(0), "0");
}

TEST(Strings, ReplacedTextIsNotLookedAtAgain) {
  std::string text = "aaaa";
  replace_all(text, "aa", "a");
  EXPECT_EQ(text, "aa");
  text = "$D$DXX";
  replace_all(text, "$DX", "");
  EXPECT_EQ(text, "$DX");
  text.assign(3'000'000, 'a');  // hours when the rest is shifted at each hit
  replace_all(text, "a", "bc");
  EXPECT_EQ(text.size(), 6'000'000U);
  EXPECT_TRUE(text.ends_with("bcbc"));
}

TEST(Strings, PositionsCountCharacters) {
  EXPECT_EQ(left_chars("日本go", 3), "日本g");
  EXPECT_EQ(right_chars("日本go", 3), "本go");
  EXPECT_EQ(mid_chars("日本go", 1, 2), "本g");
  EXPECT_EQ(mid_chars("ab", 5, 2), "");
  EXPECT_EQ(right_chars("ab", 5), "ab");
  EXPECT_EQ(char_count("日\xFFz"), 3U);
  EXPECT_FALSE(is_valid_utf8("\xE3\x81"));
  EXPECT_FALSE(is_valid_utf8("\xC0\xAF"));
  EXPECT_TRUE(is_valid_utf8("日本é😀"));
}

TEST(Printable, ShowsWhatATerminalWouldObey) {
  const struct {
    std::string text;
    const char* shown;
  } rows[] = {
      {"JA1ABC <h1>山田　ﾔﾏﾀﾞ é", "JA1ABC <h1>山田　ﾔﾏﾀﾞ é"},
      {"\x1B]0;title\x07", "␛]0;title␇"},
      {"a\r\nb\tc\x7F", "a␍␊b␉c␡"},
      {std::string("\0", 1), "␀"},
      {"\u009B31m", "�31m"},                 // a control sequence in one character
      {"\u202Egpj.exe\u2066", "�gpj.exe�"},  // turned round
      {"\uFEFF\u200F\u061C\u2028", "����"},
      {"\xFF\xC3(", "��("},       // malformed
      {"\xF4\x8F\xBE\x80", "�"},  // a byte that was no CP932
      {"", ""},
  };
  for (const auto& row : rows) EXPECT_EQ(printable(row.text), row.shown) << row.shown;
  EXPECT_EQ(printable_lines("a\x1B\nb\r\n\tc\rd\r\n\n"), "a␛\nb\n\tc␍d\n\n");
  EXPECT_EQ(printable_lines(""), "");
}

}  // namespace
}  // namespace tobarine
