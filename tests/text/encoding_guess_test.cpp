#include "text/encoding_guess.h"

#include <gtest/gtest.h>

#include "text/cp932.h"
#include "text/error.h"

namespace tobarine {
namespace {

EncodingGuess guess(std::string_view line) {
  EncodingGuess result;
  result.see("<CALL:6>JA1ABC <MODE:2>CW");
  result.see(line);
  return result;
}

TEST(EncodingGuess, OneNameTellsUtf8) {
  for (const char* name :
       {"佐藤", "鈴木", "高橋",   "田中",     "伊藤",     "渡辺",   "山本",   "中村",
        "小林", "加藤", "吉田",   "山田",     "佐々木",   "山口",   "松本",   "井上",
        "木村", "林",   "斎藤",   "清水",     "澤",       "邉",     "渡邊",   "アンテナ",
        "ｱﾝﾃﾅ", "José", "Müller", "Łódź pół", "TNX 73 😀", "１０Ｗ", "熊谷市", "さいたま市"}) {
    EXPECT_TRUE(guess(name).utf8()) << name;
    EXPECT_TRUE(guess("<NAME:9>" + std::string(name) + "<EOR>").utf8()) << name;
    EXPECT_FALSE(guess(to_cp932(name)).utf8()) << name;
  }
}

TEST(EncodingGuess, Cp932StaysWhereItIsPlausible) {
  // All of these are valid UTF-8, too.
  for (const char* text : {"ﾃｽﾄｱ", "ﾔｽ", "QSLﾃｽ", "5Wﾔｽ 10mH", "縺山", "繧子", "蜷姫 DE"}) {
    const EncodingGuess sure = guess(to_cp932(text));
    EXPECT_FALSE(sure.utf8()) << text;
  }
  EXPECT_TRUE(guess(to_cp932("ﾔｽ")).maybe_utf8());
  EXPECT_TRUE(guess(to_cp932("縺山")).maybe_utf8());
  // One CP932 line among UTF-8 ones is enough.
  EncodingGuess mixed = guess("鈴木");
  mixed.see(to_cp932("鈴木"));
  EXPECT_FALSE(mixed.utf8() || mixed.maybe_utf8());
  EXPECT_TRUE(guess("").utf8() == false && !guess("").maybe_utf8());
}

TEST(EncodingGuess, Utf16IsRefused) {
  using std::string_view_literals::operator""sv;
  for (const std::string_view head : {"\xFF\xFE<\0C\0A\0L\0L\0:\0"sv, "\xFE\xFF\0<\0C\0A\0L\0L"sv,
                                      "\"\0J\0A\0"sv, "\0<\0C\0A\0L\0L"sv, "\xFF\xFEu0\xB5"sv}) {
    EXPECT_THROW(refuse_utf16("log.adi", head), FileError);
  }
  for (const std::string_view head :
       {""sv, "<"sv, "<CALL:6>JA1ABC"sv, "\xEF\xBB\xBF<EOH>"sv, "\x93\xFA\x96\x7B"sv,
        "a\0bcdefghijklmnop"sv, "\0\0\0\0\0\0"sv}) {
    EXPECT_NO_THROW(refuse_utf16("log.adi", head));
  }
}

}  // namespace
}  // namespace tobarine
