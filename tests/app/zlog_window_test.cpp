// The ADIF-to-zLog window's commands.
#include "app/zlog_window.h"

#include <gtest/gtest.h>

#include "app/test_shell.h"
#include "paths.h"
#include "test_folder.h"
#include "text/strings.h"

namespace tobarine {
namespace {

namespace fs = std::filesystem;

class ZlogWindowTest : public ::testing::Test {
 protected:
  ZlogWindowTest()
      : main_((fs::copy(delivered_folder(), folder_ / "home"),
               start_up({folder_ / "home", "", shell_.now()})),
              folder_ / "home", shell_),
        window_(main_, shell_) {
    main_.load();
    window_.show_settings();
    fs::copy(fs::path(samples_folder()) / "n1mm.adi", folder_ / "n1mm.adi");
  }
  Settings saved() const { return read_settings(folder_ / "home/Tobarine.ini"); }

  TestFolder folder_;
  TestShell shell_;
  MainWindow main_;
  ZlogWindow window_;
};

TEST_F(ZlogWindowTest, OptionsAreSavedTheMomentTheyChange) {
  window_.check(10, true);
  window_.check(11, true);
  window_.choose_remarks(0, "2");
  window_.edit_sent_number("13M");
  EXPECT_EQ(saved().write_comment, "1");
  EXPECT_EQ(saved().comment_remarks, "2");
  EXPECT_EQ(saved().sent_number, "13");  // as a number is what the file gives back
  EXPECT_EQ(main_.settings().sent_number, "13M");
  EXPECT_EQ(window_.controls.Check[10].colour, Colour::kLightBlue);
  window_.choose_remarks(1, "2");
  EXPECT_EQ(saved().tx_number_remarks, "1");  // written with the check box's value, as ever
  window_.select_option2(1);
  EXPECT_EQ(saved().zlog_time, "ALL_J");
  EXPECT_TRUE(window_.controls.Option2[1].checked && !window_.controls.Option2[0].checked);
  // While the program runs the values last chosen hold, whatever the file keeps of them.
  window_.show_settings();
  EXPECT_EQ(window_.controls.Text7.text, "13M");
  EXPECT_EQ(window_.controls.Combo[0].text + window_.controls.Combo[1].text, "22");
}

// The main window has the same setting for its own time conversion.
TEST_F(ZlogWindowTest, ShowsTheTimeThatItWrites) {
  window_.select_option2(1);
  window_.open_file(folder_ / "n1mm.adi");
  const auto shown_and_written = [&] {
    shell_.answers = {0};  // replace what the last run wrote
    window_.convert();
    for (std::size_t i = 0; i < 3; ++i) {
      const Control& option = window_.controls.Option2[i];
      EXPECT_EQ(option.colour, option.checked ? Colour::kLightBlue : Colour::kBlack);
      if (!option.checked) continue;
      EXPECT_TRUE(contains(window_.controls.lblNotes.text, i == 1 ? ".zlo は JST" : ".zlo は UTC"));
      return option.text;
    }
    return std::string();
  };
  EXPECT_EQ(shown_and_written(), "全てJST");
  main_.open_file(folder_ / "n1mm.adi");  // which chooses no conversion
  EXPECT_EQ(shown_and_written(), "変換なし");
  main_.select_option1(1);
  EXPECT_EQ(shown_and_written(), "全てJST");
  main_.select_option1(3);
  EXPECT_EQ(shown_and_written(), "変換なし");
}

TEST_F(ZlogWindowTest, ConvertsAndOpensTheOutputsInTheEditor) {
  window_.convert();
  EXPECT_EQ(window_.controls.lblInfo.text, "");
  window_.edit_csv();
  EXPECT_TRUE(shell_.edited.empty());
  for (const std::size_t i : {4U, 11U, 10U, 7U, 2U, 1U}) window_.check(i, true);
  shell_.files.push_back(folder_ / "n1mm.adi");
  window_.open();
  EXPECT_EQ(window_.controls.lblIn.text, "入力数: 8 件");
  EXPECT_EQ(window_.controls.lblInFile.colour, Colour::kBlack);
  window_.convert();
  EXPECT_EQ(window_.controls.lblInfo.text, "変換数: 8 件");
  EXPECT_EQ(window_.controls.lblMsg.text, "処理終了");
  EXPECT_TRUE(contains(window_.controls.lblNotes.text, ".all は JST"));
  for (const char* name : {"n1mm.all", "n1mm.zlo"}) {
    EXPECT_TRUE(TestFolder::bytes_of(folder_ / name) ==
                TestFolder::bytes_of(fs::path(expected_folder()) / name));
  }
  window_.edit_csv();
  window_.edit_all();
  ASSERT_EQ(shell_.edited.size(), 2U);
  EXPECT_EQ(shell_.edited[0].filename(), "n1mm.csv");
  main_.command("mnuHamlo_csv_Edit");
  EXPECT_EQ(shell_.edited[2].filename(), "n1mm.all");
}

TEST_F(ZlogWindowTest, FilesOfTheUsersAreReplacedOnlyWhenHeSaysSo) {
  const fs::path own = folder_.text("n1mm.all", "the user's");
  window_.choose_output();  // nothing is open
  window_.open_file(folder_ / "n1mm.adi");
  window_.convert();
  ASSERT_EQ(shell_.choices.size(), 1U);
  EXPECT_TRUE(contains(shell_.choices[0].text, own.string()));
  EXPECT_FALSE(contains(shell_.choices[0].text, "n1mm.zlo"));
  shell_.answers = {1};
  shell_.files = {folder_ / "x" += ".ZLO"};
  window_.convert();
  EXPECT_EQ(shell_.suggested, std::vector<fs::path>{own});
  for (const char* name : {"x.all", "x.zlo", "x.csv"}) EXPECT_TRUE(fs::exists(folder_ / name));
  shell_.files = {folder_ / "n1mm"};
  window_.choose_output();
  shell_.answers = {0};
  window_.convert();
  EXPECT_EQ(TestFolder::bytes_of(folder_ / "n1mm.all.20260101-000000.bak"), "the user's");
  EXPECT_TRUE(contains(window_.controls.lblNotes.text, "n1mm.all -> "));
  fs::copy(folder_ / "n1mm.adi", folder_ / "2024.05.adi");
  window_.open_file(folder_ / "2024.05.adi");
  EXPECT_TRUE(contains(window_.controls.lblNotes.text, "2024.all"));
  window_.convert();
  EXPECT_TRUE(contains(window_.controls.lblNotes.text, "「出力先…」"));
}

TEST_F(ZlogWindowTest, FailuresLeaveTheWindowUsable) {
  window_.open_file(folder_.text("x.adi", "nothing"));
  EXPECT_EQ(shell_.messages.size(), 1U);
  EXPECT_FALSE(window_.controls.cmdConvert.enabled);
  window_.open_file(folder_.text("lotw.adi", "<CALL:3>A1A<EOR>\n"));
  EXPECT_EQ(shell_.choices.size(), 1U);
  EXPECT_FALSE(window_.controls.cmdConvert.enabled);
  window_.open_file(folder_ / "n1mm.adi");
  fs::create_directory(folder_ / "n1mm.zlo");
  window_.convert();
  EXPECT_EQ(shell_.messages.size(), 2U);
  EXPECT_EQ(window_.controls.lblMsg.text, "途中で止まりました");
  EXPECT_TRUE(window_.controls.cmdConvert.enabled && window_.controls.cmdOutput.enabled);
  EXPECT_FALSE(main_.running());
}

TEST_F(ZlogWindowTest, OpeningItKeepsWhatTheMainWindowHasNotWrittenYet) {
  main_.check(14, true);
  window_.show_settings();
  EXPECT_EQ(main_.settings().dx_marker_in_comment, 1);
  fs::remove(folder_ / "home/Tobarine.ini");
  fs::create_directories(folder_ / "home/Tobarine.ini/x");  // cannot be written
  window_.check(10, true);
  main_.check(1, false);
  EXPECT_EQ(shell_.messages.size(), 2U);
}

}  // namespace
}  // namespace tobarine
