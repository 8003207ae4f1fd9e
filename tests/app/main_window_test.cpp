// The main window's start, options, tables and tools, and what the user then sees.
#include <algorithm>

#include "app/main_window_fixture.h"
#include "paths.h"
#include "rules/version.h"
#include "text/input_file.h"
#include "text/strings.h"

namespace tobarine {
namespace {

TEST_F(MainWindowTest, AtTheFirstStartNoInputIsChosen) {
  EXPECT_EQ(see().title,
            " for ＴＨＷ５ :  Tobarine   ver " + std::string(kVersion) + "     coded by VELDOR");
  EXPECT_EQ(see().lblInFile.text, "ﾒﾆｭｰより入力ﾌｧｲﾙを指定して下さい。");
  EXPECT_EQ(see().lblInFile.colour, Colour::kLightRed);
  EXPECT_EQ(can_convert(), "");
  EXPECT_FALSE(see().mnuDisp.enabled || see().tool("表示 i").enabled ||
               see().tool("表示 o").enabled || see().mnuDisp_out.enabled);
  EXPECT_EQ(see().lblIn.text, "入力数: 0 件");
  EXPECT_EQ(see().lblInfo.text, "変換数: 0 件");
  EXPECT_TRUE(see().Check[1].checked && see().Check[2].checked && see().Check[15].checked);
  EXPECT_EQ(see().Check[1].colour, Colour::kLightBlue);
  EXPECT_EQ(see().Check[3].colour, Colour::kBlack);
  EXPECT_TRUE(see().Option1[2].checked && see().Option2[2].checked && see().Option3[0].checked);
  EXPECT_EQ(see().txtWas.text, "WAS=");
  EXPECT_EQ(window_->settings().jcc_list_date, "受信履歴無し");
  EXPECT_EQ(see().Check[16].tip, "ＱＴＨ欄が空白で無ければ転記します");
  EXPECT_EQ(window_->bands.cell(1, 1), "70CM");
  EXPECT_EQ(window_->modes.cell(1, 2), "RTY");
  EXPECT_TRUE(shell_.background.empty());
}

TEST_F(MainWindowTest, TheTraceTellsOfTheLoadStep) {
  window_->check(13, true);
  window_->check(1, true);  // written with it
  start();
  std::vector<std::string> traced;
  for (const auto& entry : fs::directory_iterator(home())) {
    if (entry.path().filename().string().starts_with("2026")) {
      traced = read_text_lines(entry.path());
    }
  }
  const char* expected[] = {"Tobarine.Show",
                            "     Form_Load()",
                            "     ini_read",
                            "     Open strPath & Band_tbl.ini For Input As #f_i",
                            "     mnuJARL_Download_Click",
                            "     Make_JCC_JCG_chk_1st",
                            "         Form_Load()  OK"};
  auto at = traced.begin();
  for (const char* line : expected) {
    at = std::find(at, traced.end(), line);
    EXPECT_NE(at, traced.end()) << line;
  }
}

TEST_F(MainWindowTest, SettingsSurviveTheLoadStep) {
  window_->check(5, true);
  window_->check(1, false);
  window_->select_option3(1);
  start();
  EXPECT_TRUE(see().Check[5].checked && see().Option3[1].checked);
  EXPECT_FALSE(see().Check[1].checked);
  EXPECT_EQ(saved().use_rmks2, 1);
}

TEST_F(MainWindowTest, OptionsAreSavedTheMomentTheyChange) {
  for (std::size_t i = 1; i <= 12; ++i) window_->check(i, i != 1);
  EXPECT_EQ(saved().use_rmks1, 0);
  EXPECT_EQ(saved().write_state, 1);
  EXPECT_EQ(saved().year, "2026");
  EXPECT_TRUE(see().txtYYYY.read_only);
  window_->check(12, false);
  EXPECT_FALSE(see().txtYYYY.read_only);
  window_->edit_year("1999");
  EXPECT_EQ(saved().year, "1999");
  window_->check(16, true);
  EXPECT_EQ(saved().write_qth, "1");
  window_->check(13, true);
  window_->check(14, true);
  EXPECT_EQ(saved().check_lists_at_start, 0);  // with the next write
  window_->select_option2(0);
  EXPECT_EQ(saved().state_remarks, 0);
  EXPECT_EQ(saved().check_lists_at_start, 1);
  EXPECT_EQ(saved().dx_marker_in_comment, 1);
  EXPECT_EQ(see().Option2[0].colour, Colour::kLightBlue);
  EXPECT_EQ(see().Option2[2].colour, Colour::kBlack);
  window_->command("Command1");
  EXPECT_EQ(see().txtWas.text, "");
  window_->edit_was("ST:");
  EXPECT_EQ(window_->settings().state_keyword, "ST:");
}

TEST_F(MainWindowTest, ShowsFilesThatExist) {
  open("mnuOpen_csv", sample("hamlog.csv"));
  window_->command("表示 i");
  window_->command("mnuHelp");
  ASSERT_EQ(shell_.viewed.size(), 2U);
  EXPECT_EQ(path_text(shell_.viewed[1].filename()), "変換テーブルの説明.txt");
  window_->command("mnuDisp_out");
  EXPECT_EQ(see().lblConv.text, "ﾌｧｲﾙがありません");
  EXPECT_EQ(see().lblConv.colour, Colour::kLightRed);
  open("mnuOpen_csv", sample("hamlog.csv"));
  fs::remove(shell_.viewed[1]);
  window_->command("mnuHelp");
  EXPECT_EQ(see().lblConv.text, "ﾌｧｲﾙがありません");
  EXPECT_EQ(shell_.viewed.size(), 2U);
  window_->command("cmdH2L");
  window_->command("mnuDisp_report");
  EXPECT_EQ(shell_.reports, 1);
  window_->command("mnuClear");
  EXPECT_EQ(see().lblInfo.text + see().lblMsg.text + see().lblNotes.text, "");
}

TEST_F(MainWindowTest, TheEditorOpensTheFileSetLast) {
  open("mnuHamlo_csv_Edit", sample("hamlog.csv"));
  window_->command("mnuHamlo_csv_Edit");
  EXPECT_EQ(shell_.edited.size(), 2U);
  EXPECT_EQ(shell_.asked.size(), 1U);
  window_->command("mnuEditHelp");
  EXPECT_EQ(shell_.messages.back().title, "　　編集方法の説明");
}

TEST_F(MainWindowTest, ExitSavesTheGridsAndDeletesTheIndexFiles) {
  folder_.file("home/a.hdx", "x");
  folder_.file("home/B.HDX", "x");
  folder_.file("home/a.hdb", "x");
  window_->bands.set_cell(1, 3, "70cm");
  window_->modes.go_to(2, 1);
  window_->modes.type("X");  // still in the text box
  window_->command("終了");
  EXPECT_EQ(shell_.quits, 1);
  EXPECT_FALSE(fs::exists(home() / "a.hdx") || fs::exists(home() / "B.HDX"));
  EXPECT_TRUE(fs::exists(home() / "a.hdb"));
  EXPECT_EQ(saved().jcc_list_date, "受信履歴無し");
  EXPECT_EQ(read_text_lines(home() / "Band_tbl.ini")[0], "\"1\",\"70CM\",\"430\",\"70cm\",\"\"");
  EXPECT_EQ(read_text_lines(home() / "Mode_tbl.ini")[1], "\"2\",\"X\",\"P31\"");
  EXPECT_TRUE(shell_.messages.empty());
}

// The user types a text into a cell.
void edit(GridEditor& grid, std::size_t row, std::size_t column, std::string_view text) {
  grid.go_to(row, column);
  grid.open();
  grid.set_text(text);
  grid.grid_focused();
}

TEST_F(MainWindowTest, AnEditedTableIsToldToCountFromTheNextStart) {
  EXPECT_FALSE(see().lblSaving.visible);
  edit(window_->modes, 1, 2, "RTY");
  EXPECT_FALSE(see().lblSaving.visible);  // it was that before
  edit(window_->modes, 1, 2, "RT");
  EXPECT_TRUE(contains(see().lblSaving.text, "次の起動から使われます"));
  edit(window_->bands, 11, 1, "33CM");
  EXPECT_TRUE(contains(see().lblSaving.text, "灰色の行は書き換えられません"));
  EXPECT_EQ(window_->bands.cell(11, 1), "");
  edit(window_->bands, 9, 1, "33CM");
  EXPECT_TRUE(contains(see().lblSaving.text, "9 行目は保存されません (8 行目の ADIF が空"));
  edit(window_->bands, 8, 1, "9CM");
  EXPECT_FALSE(contains(see().lblSaving.text, "保存されません"));
}

// Two windows over one folder.
TEST_F(MainWindowTest, ATableIsWrittenOnlyWhereItWasEdited) {
  TestShell other_shell;
  MainWindow other(start_up({home(), "", shell_.now()}), home(), other_shell);
  other.load();
  edit(other.bands, 1, 3, "70cm");
  edit(other.bands, 8, 1, "9CM");
  edit(other.modes, 2, 2, "P3");
  other.command("終了");
  const std::string modes = TestFolder::bytes_of(home() / "Mode_tbl.ini");
  edit(window_->bands, 2, 3, "23cm");
  edit(window_->bands, 8, 1, "33CM");  // free here, no longer there
  window_->command("終了");
  const std::vector<std::string> bands = read_text_lines(home() / "Band_tbl.ini");
  EXPECT_EQ(bands[0], "\"1\",\"70CM\",\"430\",\"70cm\",\"\"");
  EXPECT_EQ(bands[1], "\"2\",\"23CM\",\"1200\",\"23cm\",\"\"");
  EXPECT_EQ(bands[7] + bands[8], "\"8\",\"9CM\",\"\",\"\",\"\"\"9\",\"33CM\",\"\",\"\",\"\"");
  EXPECT_EQ(TestFolder::bytes_of(home() / "Mode_tbl.ini"), modes);
  EXPECT_TRUE(other_shell.messages.empty());
  ASSERT_EQ(shell_.messages.size(), 1U);
  EXPECT_TRUE(contains(shell_.messages[0].text, "(2 行目、8 行目) だけを書きました"));
}

TEST_F(MainWindowTest, RowsThatAreNotSavedStayInTheOldFile) {
  std::string table;
  for (int i = 1; i <= 12; ++i) table += "\"1\",\"B" + std::to_string(i) + "\",\"1\",\"\",\"\"\r\n";
  folder_.text("home/Band_tbl.ini", table);
  start();
  window_->command("終了");
  EXPECT_EQ(TestFolder::bytes_of(home() / "Band_tbl.ini"), table);  // nothing was edited
  edit(window_->bands, 1, 1, "X");
  window_->command("終了");
  EXPECT_EQ(read_text_lines(home() / "Band_tbl.ini").size(), 10U);
  ASSERT_EQ(shell_.messages.size(), 1U);
  EXPECT_TRUE(contains(shell_.messages[0].text, "11、12 行目は保存されません"));
  std::size_t kept = 0;
  for (const auto& entry : fs::directory_iterator(home())) {
    const bool is_backup = entry.path().extension() == ".bak";
    kept += is_backup && TestFolder::bytes_of(entry.path()) == table ? 1 : 0;
  }
  EXPECT_EQ(kept, 1U);
}

TEST_F(MainWindowTest, AnOptionChangedInAnotherWindowStays) {
  TestShell other_shell;
  MainWindow other(start_up({home(), "", shell_.now()}), home(), other_shell);
  other.load();
  other.check(5, true);
  window_->check(13, true);  // reaches the file with the next
  window_->check(6, true);
  EXPECT_EQ(saved().keep_full_width_rmks1, 1);
  EXPECT_EQ(saved().keep_full_width_rmks2, 1);
  EXPECT_EQ(saved().check_lists_at_start, 1);
  EXPECT_TRUE(contains(see().lblSaving.text, "そのまま残しました: 全角を含む Rmks 1"));
  EXPECT_FALSE(see().Check[5].checked);  // what this window shows is what it does
  window_->check(5, true);
  window_->check(5, false);
  EXPECT_EQ(saved().keep_full_width_rmks1, 0);
  other.check(1, false);
  EXPECT_EQ(saved().keep_full_width_rmks1, 0);
  EXPECT_EQ(saved().keep_full_width_rmks2, 1);
}

TEST_F(MainWindowTest, TheWindowIsNeverLargerThanItsLimits) {
  window_->resize(20000, 20000);
  EXPECT_EQ(see().width, 12960);
  EXPECT_EQ(see().height, 10320);
  window_->resize(9000, 8000);
  EXPECT_EQ(see().width, 9000);
}

TEST_F(MainWindowTest, TheLeagueIsAskedBesideTheWindow) {
  window_->check(13, true);
  window_->check(1, true);
  window_->jarl_server.url = "http://127.0.0.1:1/";  // nobody there
  window_->command("mnuJARL_Download");
  EXPECT_EQ(see().lblMsg.text, "JARL のリストを取得しています…");
  EXPECT_EQ(see().progress, kBusy);
  ASSERT_EQ(shell_.background.size(), 1U);
  shell_.background[0]()();
  EXPECT_EQ(shell_.messages.size(), 1U);
  EXPECT_EQ(see().lblMsg.text, "");
  EXPECT_EQ(see().progress, 0);
  // At the start a dead network is one quiet line.
  window_.emplace(start_up({home(), "", shell_.now()}), home(), shell_);
  window_->jarl_server.url = "http://127.0.0.1:1/";
  window_->load();
  ASSERT_EQ(shell_.background.size(), 2U);
  EXPECT_EQ(see().lblMsg.text, "");
  shell_.background[1]()();
  EXPECT_EQ(shell_.messages.size(), 1U);
  EXPECT_EQ(see().lblNotes.text, "JARL のリストの更新日付けを調べられませんでした");
}

TEST_F(MainWindowTest, ToolsRenewTheReferenceFiles) {
  open("mnuLearn_codes", folder_.text("c.csv",
                                      "W1AW,24/05/01,12:00U,59,59,14,CW,502A,,,,,,,\r\n"
                                      "W1AA,24/05/01,12:00U,59,59,14,CW,502A,,,,,,,\r\n"));
  EXPECT_TRUE(contains(shell_.messages.back().text, "登録数: 1 件"));
  window_->command("mnuMake_JCC_JCG");  // there are no lists yet
  EXPECT_EQ(shell_.messages.back().title, "!Tobarine");
  open("mnuMake_dxcc_hl_dat", folder_.text("cty.dat", "no cty.dat"));
  EXPECT_EQ(shell_.messages.back().title, "!Tobarine");
  window_->command("adif2zlog_all");
  EXPECT_EQ(shell_.zlog_windows, 1);
}

TEST_F(MainWindowTest, AReferenceFileThatShrinksIsReplacedOnlyWhenTheUserSaysSo) {
  const std::string before = TestFolder::bytes_of(home() / "dxcc_hl.dat");
  const fs::path small = folder_.text("cty.dat", "Japan: 25: 45: AS: 1: 2: 3: JA:\r\n JA;\r\n");
  open("mnuMake_dxcc_hl_dat", small);
  ASSERT_EQ(shell_.choices.size(), 1U);
  EXPECT_TRUE(contains(shell_.choices[0].text, "大きく減ります"));
  EXPECT_FALSE(contains(shell_.choices[0].text, "--force"));
  EXPECT_EQ(TestFolder::bytes_of(home() / "dxcc_hl.dat"), before);
  shell_.answers.push_back(0);
  open("mnuMake_dxcc_hl_dat", small);
  EXPECT_LT(TestFolder::bytes_of(home() / "dxcc_hl.dat").size(), 1000U);
}

TEST(MainControlsTest, EveryMenuEntryIsACommandOrHoldsOthers) {
  // A name that means nothing would do nothing: each entry without entries of its own must.
  const TestFolder folder;
  fs::copy(delivered_folder(), folder / "home");
  for (const MenuEntry& entry : menu_entries()) {
    const bool holds = std::ranges::any_of(
        menu_entries(), [&](const MenuEntry& other) { return other.parent == entry.name; });
    TestShell shell;
    MainWindow window(start_up({folder / "home", "", shell.now()}), folder / "home", shell);
    window.load();
    const int mirrored = shell.mirrored;
    window.command(entry.name);
    EXPECT_EQ(shell.mirrored > mirrored, !holds) << entry.name;
  }
}

}  // namespace
}  // namespace tobarine
