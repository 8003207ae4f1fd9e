// The main window's conversions.
#include <algorithm>

#include "app/main_window_fixture.h"
#include "paths.h"
#include "text/strings.h"

namespace tobarine {
namespace {

TEST_F(MainWindowTest, ConvertsEveryKind) {
  open("mnuOpen_csv", sample("hamlog.csv"));
  EXPECT_FALSE(see().mnuDisp_out.enabled);
  EXPECT_FALSE(see().cmdReport.visible);
  window_->command("変換 H2L");
  EXPECT_TRUE(see().cmdReport.visible);
  window_->command("cmdReport");
  EXPECT_EQ(shell_.reports, 1);
  EXPECT_EQ(see().lblInfo.text, "変換数: 48 件");
  EXPECT_EQ(see().lblMsg.text, "処理終了");
  EXPECT_EQ(see().progress, 0);
  EXPECT_EQ(can_convert(), "H");
  EXPECT_TRUE(see().mnuDisp_out.enabled && see().tool("表示 o").enabled);
  EXPECT_TRUE(see().mnuDisp_report.enabled);
  EXPECT_TRUE(TestFolder::bytes_of(folder_ / "hamlog.adi") ==
              TestFolder::bytes_of(fs::path(expected_folder()) / "sample_defaults.adi"));
  window_->select_option3(1);
  open("mnuOpen_zlog_zlo", sample("contest.zlo"));
  window_->command("cmdH2L");
  EXPECT_TRUE(TestFolder::bytes_of(folder_ / "contest.adi") ==
              TestFolder::bytes_of(fs::path(expected_folder()) / "contest.adi"));
  EXPECT_TRUE(fs::exists(home() / "zlog_1.csv"));
  EXPECT_TRUE(contains(see().lblNotes.text, "JST"));
  open("mnuOpen_adi", sample("logger32.adi"));
  window_->command("cmdL2H");
  EXPECT_EQ(see().lblInfo.text, "変換数: 15 件");
  EXPECT_EQ(can_convert(), "L");
  EXPECT_TRUE(TestFolder::bytes_of(folder_ / "logger32.csv") ==
              TestFolder::bytes_of(fs::path(expected_folder()) / "logger32_defaults.csv"));
}

TEST_F(MainWindowTest, TheFifteenthColumnOutlivesARun) {
  open("mnuOpen_adi", sample("n1mm.adi"));
  const auto last_column = [&] {
    fs::remove(folder_ / "n1mm.csv");
    window_->command("cmdL2H");
    const std::string csv = TestFolder::bytes_of(folder_ / "n1mm.csv");
    return csv.substr(csv.size() - 5);
  };
  EXPECT_EQ(last_column(), ",\"\"\r\n");
  window_->select_option1(1);
  EXPECT_EQ(last_column(), "\"0\"\r\n");
  window_->select_option1(0);
  EXPECT_EQ(last_column(), "\"0\"\r\n");
}

TEST_F(MainWindowTest, AFileOfTheUsersIsReplacedOnlyWhenHeSaysSo) {
  const auto names = [this] {
    std::vector<std::string> all;
    for (const auto& entry : fs::directory_iterator(folder_.path())) {
      if (entry.is_regular_file()) all.push_back(path_text(entry.path().filename()));
    }
    std::ranges::sort(all);
    return all;
  };
  using Names = std::vector<std::string>;
  const fs::path own = folder_.text("n1mm.csv", "the user's");
  open("mnuOpen_adi", sample("n1mm.adi"));
  window_->command("cmdL2H");  // he leaves it
  ASSERT_EQ(shell_.choices.size(), 1U);
  EXPECT_TRUE(contains(shell_.choices[0].text, own.string()));
  EXPECT_EQ(shell_.choices[0].answers, (Names{"置き換える", "別の名前…"}));
  EXPECT_EQ(names(), (Names{"n1mm.adi", "n1mm.csv"}));
  shell_.answers = {1};  // another name, and then none
  window_->command("cmdL2H");
  EXPECT_EQ(shell_.suggested.back(), own);
  shell_.answers = {1};
  shell_.files = {folder_ / "other"};
  window_->command("cmdL2H");
  EXPECT_TRUE(see().lblOutFile.text.ends_with("other.csv"));
  EXPECT_EQ(see().lblInfo.text, "変換数: 8 件");
  EXPECT_EQ(names(), (Names{"n1mm.adi", "n1mm.csv", "other.csv"}));
  shell_.answers = {1, 0};  // the other name is taken, too
  shell_.files = {own};
  window_->command("cmdL2H");
  EXPECT_EQ(names(), (Names{"n1mm.adi", "n1mm.csv", "n1mm.csv.20260101-000000.bak", "other.csv"}));
  EXPECT_EQ(TestFolder::bytes_of(folder_ / "n1mm.csv.20260101-000000.bak"), "the user's");
  EXPECT_TRUE(contains(see().lblNotes.text, "n1mm.csv -> n1mm.csv.20260101-000000.bak"));
  const std::size_t asked = shell_.choices.size();
  open("mnuOpen_csv", sample("hamlog.csv"));
  for (const char* command : {"cmdH2L", "cmdeqsl", "cmdH2L"}) window_->command(command);
  EXPECT_EQ(shell_.choices.size(), asked);  // an ADIF of our own is replaced
}

TEST_F(MainWindowTest, TheOutputCanBeChosenUntilAnotherLogIsOpened) {
  EXPECT_FALSE(see().cmdOutput.enabled);
  const fs::path log = sample("hamlog.csv");
  const fs::path dotted = folder_ / "2024.05.csv";
  fs::copy(log, dotted);
  window_->open_file(dotted);
  EXPECT_TRUE(see().cmdOutput.enabled);
  EXPECT_TRUE(contains(see().lblNotes.text, "2024.adi") &&
              contains(see().lblNotes.text, "「出力先…」"));
  shell_.files = {dotted};
  window_->command("cmdOutput");  // the input itself
  EXPECT_TRUE(contains(shell_.messages.back().text, "同じファイル"));
  shell_.files = {folder_ / "mine.adi"};
  window_->command("cmdOutput");
  EXPECT_EQ(shell_.suggested.back(), folder_ / "2024.adi");
  EXPECT_EQ(see().lblOutFile.text, (folder_ / "mine.adi").string());
  EXPECT_EQ(see().lblNotes.text, "");
  window_->command("cmdH2L");
  EXPECT_TRUE(fs::exists(folder_ / "mine.adi") && !fs::exists(folder_ / "2024.adi"));
  window_->open_file(log);
  EXPECT_EQ(see().lblOutFile.text, (folder_ / "hamlog.adi").string());
  window_->open_file(dotted);
  window_->command("cmdH2L");
  EXPECT_TRUE(contains(see().lblNotes.text, "出力の名前: "));
}

TEST_F(MainWindowTest, ConversionsThatCannotBeChosenDoNothing) {
  for (const char* command :
       {"cmdH2L", "eQSL", "変換 L2H", "表示 i", "表示 o", "mnuDisp_report", "no such key", ""}) {
    window_->command(command);
  }
  EXPECT_TRUE(shell_.messages.empty() && shell_.viewed.empty());
  EXPECT_EQ(see().lblInfo.text, "変換数: 0 件");
}

TEST_F(MainWindowTest, ARunThatFailsLeavesTheWindowUsable) {
  open("mnuOpen_csv", folder_.text("a.csv", "JA1ABC,24/05/01,12:00U\r\n"));
  window_->command("cmdH2L");
  EXPECT_EQ(shell_.messages.size(), 1U);
  EXPECT_EQ(see().lblMsg.text, "途中で止まりました");
  EXPECT_EQ(see().lblMsg.colour, Colour::kLightRed);
  EXPECT_EQ(can_convert(), "H");
  fs::remove(folder_ / "a.adi");
  fs::create_directory(folder_ / "a.adi");
  window_->command("cmdeqsl");
  EXPECT_EQ(shell_.messages.size(), 2U);
  EXPECT_EQ(see().lblMsg.text, "途中で止まりました");
  EXPECT_EQ(can_convert(), "H");
  EXPECT_FALSE(window_->running());
}

TEST_F(MainWindowTest, TheUserCanStopARun) {
  const std::string contact = "JA1ABC,24/05/01,12:00U,59,59,7,CW,1001,,J  ,,,,,0\r\n";
  std::string log;
  for (int i = 0; i < 10000; ++i) log += contact;
  open("mnuOpen_csv", folder_.text("long.csv", log));
  shell_.stop_after = 2;
  window_->command("cmdH2L");
  EXPECT_EQ(see().lblMsg.text, "中止しました");
  EXPECT_EQ(see().lblMsg.colour, Colour::kBlack);
  EXPECT_TRUE(contains(see().lblNotes.text, "そこまでに書いた交信は残っています"));
  EXPECT_TRUE(shell_.messages.empty());
  EXPECT_FALSE(see().cmdStop.enabled);
  EXPECT_EQ(see().lblInfo.text, "変換数: 8191 件");
  const std::string adif = TestFolder::bytes_of(folder_ / "long.adi");
  EXPECT_TRUE(adif.ends_with("<EOR>\r\n\r\n"));
}

}  // namespace
}  // namespace tobarine
