#include "app/settings.h"

#include <gtest/gtest.h>

#include "app/option_table.h"
#include "app/profile_file.h"
#include "test_folder.h"
#include "text/error.h"
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

// As many lines as this once took minutes.
TEST(ProfileFile, ManyCommentsAreNoBurden) {
  const TestFolder folder;
  std::string text = "[Config]\r\n";
  for (int i = 0; i < 200000; ++i) text += "; comment\r\n";
  const auto file = folder.text("a.ini", text + "Chk_9=1\r\nwas_moji=WAS=\rX\r\n");
  const Settings settings = read_settings(file);
  EXPECT_EQ(settings.write_state, 1);
  EXPECT_EQ(settings.state_keyword, "WAS=");  // no line end gets out
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
  EXPECT_EQ(TestFolder::bytes_of(folder / "Tobarine.ini"),
            "[Config]\r\nversion=5.29\r\nChk_1=1\r\nChk_2=1\r\nChk_3=0\r\nChk_4=0\r\nChk_5=0\r\n"
            "Chk_6=0\r\nChk_7=0\r\nChk_8=0\r\nChk_9=0\r\nChk_10=0\r\nChk_11=0\r\nOp_1=2\r\n"
            "Op_2=2\r\nwas_moji=WAS=\r\nChk_12=0\r\nChk_13=0\r\nChk_14=0\r\nChk_15=1\r\nChk_16=\r\n"
            "set_YYYY=\r\nOp_3=0\r\n[JCC_JCG]\r\nJCC_date=\r\nJCG_date=\r\n"
            "[set_STX]\r\nset_STX=\r\n[utc_jst_str]\r\nutc_jst_str=\r\n"
            "[del_power_flag]\r\ndel_power_flag=\r\n[zlog_all_jst]\r\nzlog_all_jst=\r\n"
            "[Tobarine]\r\nfreq_only_MHz_1=\r\n[ADIF_2_zLog_all]\r\nOP_name_tenki=\r\n"
            "TX_NR_tenki=\r\nCOMMENT_tenki=\r\nAGE_tenki=\r\nIOTA_tenki=\r\nTX_NR_rmks=\r\n"
            "COMMENT_rmks=\r\nAGE_rmks=\r\nIOTA_rmks=\r\nTX_NR_001=\r\nfreq_only_MHz_2=\r\n"
            "csv_qth=\r\n");
  const Settings read = read_settings(folder / "Tobarine.ini");
  EXPECT_EQ(read.state_keyword, "WAS=");
  EXPECT_EQ(read.year, "0");
}

TEST(Settings, ValuesAreReadTolerantly) {
  const TestFolder folder;
  const Settings s = read_settings(folder.text(
      "a.ini",
      "[Config]\r\nChk_1=abc\r\nChk_2=2.5\r\nChk_3=99999\r\nOp_1= 3x\r\nset_YYYY=12abc\r\n"
      "was_moji=" +
          std::string(90, 'w') + "\r\n[set_STX]\r\nset_STX=007.50\r\n"));
  EXPECT_EQ(s.use_rmks1, 0);
  EXPECT_EQ(s.use_rmks2, 2);
  EXPECT_EQ(s.leave_out_jst, 32767);
  EXPECT_EQ(s.time_conversion, 3);
  EXPECT_EQ(s.year, "12");
  EXPECT_EQ(s.sent_number, "7.5");
  EXPECT_EQ(s.state_keyword.size(), 79U);
}

TEST(Settings, TxNrRmksIsWrittenWithTheOtherValue) {
  const TestFolder folder;
  Settings s = first_start_settings();
  set_setting(s, "TX_NR_tenki", "1");
  set_setting(s, "tx_number_remarks", "2");
  write_settings(s, folder / "a.ini");
  EXPECT_EQ(read_settings(folder / "a.ini").tx_number_remarks, "1");
}

TEST(Settings, ValuesGivenByHandAreChecked) {
  Settings s = first_start_settings();
  set_setting(s, "chk_9", "1");
  EXPECT_EQ(s.write_state, 1);
  set_setting(s, "write_state", "0");
  EXPECT_EQ(s.write_state, 0);
  set_setting(s, "set_STX", "13M");
  EXPECT_EQ(s.sent_number, "13M");
  set_setting(s, "was_moji", std::string(90, 'w'));
  EXPECT_EQ(s.state_keyword.size(), 79U);
  for (const Option& option : option_table()) {
    set_setting(s, option.name, option.first);  // what a fresh file holds may be given again
    for (const OptionValue& value : option.values) set_setting(s, option.key, value.value);
  }
  const Settings before = s;
  const auto refusal = [&s](std::string_view name, std::string_view value) -> std::string {
    try {
      set_setting(s, name, value);
      return "";
    } catch (const UsageError& error) {
      return error.what();
    }
  };
  EXPECT_EQ(refusal("Op_3", "JST"), "設定 Op_3 の値が使えません: JST (使える値: 0 (UTC)、1 (JST))");
  EXPECT_TRUE(contains(refusal("Chk_1", "5"), "0 (しない)、1 (する)"));
  EXPECT_TRUE(contains(refusal("Chk_1", "1x"), "0 (しない)"));
  EXPECT_TRUE(contains(refusal("Chk_9", ""), "0 (しない)"));
  EXPECT_TRUE(contains(refusal("utc_jst_str", "JST"), "ALL_J (全てJST)"));
  EXPECT_TRUE(contains(refusal("COMMENT_rmks", "3"), "1 (Rmks 1)、2 (Rmks 2)"));
  EXPECT_TRUE(contains(refusal("Chk_99", "1"), "設定の名前が違います: Chk_99"));
  EXPECT_TRUE(contains(refusal("was_moji", "A\nB"), "改行"));
  EXPECT_EQ(s.use_rmks1, before.use_rmks1);
}

// Each row stands for itself: a name, a key or a control that two rows share would set the wrong
// one.
TEST(OptionTable, NamesKeysAndControlsAreUnique) {
  for (const Option& option : option_table()) {
    EXPECT_EQ(find_option(option.name), &option);
    EXPECT_EQ(find_option(option.key), &option);
    EXPECT_FALSE(option.meaning.empty()) << option.name;
    if (option.window == Option::Window::kNone) continue;
    EXPECT_EQ(find_option(option.window, option.control), &option);
  }
  Settings one;
  for (const Option& option : option_table()) {
    const std::string before = option_value(one, option);
    set_option(one, option, "1");
    EXPECT_NE(option_value(one, option), before) << option.name << ": its member has another row";
  }
}

TEST(Settings, GiveTheOptionsOfARun) {
  Settings s = first_start_settings();
  H2lOptions options = h2l_options(s);
  EXPECT_TRUE(options.use_rmks1 && options.use_rmks2);
  EXPECT_EQ(options.state_remarks, StateRemarks::kEither);
  EXPECT_EQ(options.state_search, StateSearch::kWord);
  s.state_after_keyword = 1;
  EXPECT_EQ(h2l_options(s).state_search, StateSearch::kKeyword);
  s.state_after_keyword_or_alone = 1;
  s.state_remarks = 1;
  s.write_qth = "1";
  options = h2l_options(s);
  EXPECT_EQ(options.state_search, StateSearch::kKeywordThenWord);
  EXPECT_EQ(options.state_remarks, StateRemarks::kRmks2);
  EXPECT_TRUE(options.write_qth);
}

}  // namespace
}  // namespace tobarine
