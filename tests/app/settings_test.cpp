#include "app/settings.h"

#include <gtest/gtest.h>

#include "app/profile_file.h"
#include "test_folder.h"
#include "text/strings.h"

namespace tobarine {
namespace {

TEST(ProfileFile, ReadsAsTheProfileCallsDo) {
  const TestFolder folder;
  const ProfileFile profile(
      folder.text("a.ini",
                  "; comment\r\n[Config]\r\n Key = value with blank \r\nquoted=\" x \"\r\n"
                  ";Key2=no\r\nKEY=second\r\nlong=" +
                      std::string(100, 'x') + "\r\n[other]\r\nKey=elsewhere\r\nempty=\r\n"));
  EXPECT_EQ(profile.get("CONFIG", "key", 79), "value with blank");
  EXPECT_EQ(profile.get("Config", "quoted", 79), " x ");
  EXPECT_EQ(profile.get("Config", "Key2", 79), "");
  EXPECT_EQ(profile.get("Config", "long", 79).size(), 79U);
  EXPECT_EQ(profile.get("other", "key", 79), "elsewhere");
  EXPECT_EQ(profile.get("other", "empty", 79), "");
  EXPECT_EQ(profile.get("none", "key", 79), "");
}

TEST(ProfileFile, AHandEditedFileKeepsWhatItHas) {
  const TestFolder folder;
  const auto file =
      folder.text("a.ini", "; 手書き\r\n[config]\r\nmine=1\r\nA = old\r\n\r\n[x]\r\ny=2\r\n");
  ProfileFile profile(file);
  profile.set("Config", "a", "new");
  profile.set("Config", "B", "added");
  profile.set("Z", "c", "");
  profile.save(file);
  EXPECT_EQ(
      from_cp932(TestFolder::bytes_of(file)),
      "; 手書き\r\n[config]\r\nmine=1\r\nA =new\r\nB=added\r\n\r\n[x]\r\ny=2\r\n[Z]\r\nc=\r\n");
}

TEST(Settings, FirstStartFileIsTheWholeTable) {
  const TestFolder folder;
  write_settings(first_start_settings(), folder / "Tobarine.ini");
  const std::string text = TestFolder::bytes_of(folder / "Tobarine.ini");
  EXPECT_TRUE(text.starts_with("[Config]\r\nversion=5.29\r\nChk_1=1\r\nChk_2=1\r\nChk_3=0\r\n"));
  EXPECT_TRUE(contains(text, "Op_1=2\r\nOp_2=2\r\nwas_moji=WAS=\r\nChk_12=0\r\n"));
  EXPECT_TRUE(
      contains(text, "Chk_15=1\r\nChk_16=\r\nset_YYYY=\r\nOp_3=0\r\n[JCC_JCG]\r\nJCC_date=\r\n"));
  EXPECT_TRUE(text.ends_with("freq_only_MHz_2=\r\ncsv_qth=\r\n"));
  const Settings read = read_settings(folder / "Tobarine.ini");
  EXPECT_EQ(read.was_moji, "WAS=");
  EXPECT_EQ(read.set_YYYY, "0");
}

TEST(Settings, ValuesAreReadTolerantly) {
  const TestFolder folder;
  const Settings s = read_settings(folder.text(
      "a.ini",
      "[Config]\r\nChk_1=abc\r\nChk_2=2.5\r\nChk_3=99999\r\nOp_1= 3x\r\nset_YYYY=12abc\r\n"
      "was_moji=" +
          std::string(90, 'w') + "\r\n[set_STX]\r\nset_STX=007.50\r\n"));
  EXPECT_EQ(s.Chk_1, 0);
  EXPECT_EQ(s.Chk_2, 2);
  EXPECT_EQ(s.Chk_3, 32767);
  EXPECT_EQ(s.Op_1, 3);
  EXPECT_EQ(s.set_YYYY, "12");
  EXPECT_EQ(s.set_STX, "7.5");
  EXPECT_EQ(s.was_moji.size(), 79U);
}

TEST(Settings, TxNrRmksIsWrittenWithTheOtherValue) {
  const TestFolder folder;
  Settings s = first_start_settings();
  ASSERT_TRUE(set_setting(s, "TX_NR_tenki", "1"));
  ASSERT_TRUE(set_setting(s, "TX_NR_rmks", "2"));
  write_settings(s, folder / "a.ini");
  EXPECT_EQ(read_settings(folder / "a.ini").TX_NR_rmks, "1");
  EXPECT_FALSE(set_setting(s, "chk_99", "1"));
}

TEST(Settings, GiveTheOptionsOfARun) {
  Settings s = first_start_settings();
  H2lOptions options = h2l_options(s);
  EXPECT_TRUE(options.use_rmks1 && options.use_rmks2);
  EXPECT_EQ(options.state_remarks, StateRemarks::kEither);
  EXPECT_EQ(options.state_search, StateSearch::kWord);
  s.Chk_10 = 1;
  EXPECT_EQ(h2l_options(s).state_search, StateSearch::kKeyword);
  s.Chk_11 = 1;
  s.Op_2 = 1;
  s.Chk_16 = "1";
  options = h2l_options(s);
  EXPECT_EQ(options.state_search, StateSearch::kKeywordThenWord);
  EXPECT_EQ(options.state_remarks, StateRemarks::kRmks2);
  EXPECT_TRUE(options.write_qth);
}

}  // namespace
}  // namespace tobarine
