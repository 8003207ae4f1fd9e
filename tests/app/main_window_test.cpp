// The main window's commands and what the user then sees.
#include "app/main_window.h"

#include <algorithm>
#include <gtest/gtest.h>

#include "app/test_shell.h"
#include "hamlog/stand_in_library.h"
#include "paths.h"
#include "rules/version.h"
#include "test_folder.h"
#include "text/input_file.h"
#include "text/strings.h"

namespace tobarine {
namespace {

namespace fs = std::filesystem;

class MainWindowTest : public ::testing::Test {
 protected:
  MainWindowTest() {
    fs::copy(delivered_folder(), home());
    start();
  }
  fs::path home() const { return folder_ / "home"; }
  void start() {
    window_.reset();  // gives its trace log back
    window_.emplace(start_up({home(), "", shell_.now()}), home(), shell_);
    window_->load();
  }
  MainControls& see() { return window_->controls; }
  void open(std::string_view command, const fs::path& file) {
    shell_.files.push_back(file);
    window_->command(command);
  }
  fs::path sample(const std::string& name) {
    fs::copy(fs::path(samples_folder()) / name, folder_ / name,
             fs::copy_options::overwrite_existing);
    return folder_ / name;
  }
  Settings saved() const { return read_settings(home() / "Tobarine.ini"); }
  // Which of the three conversions can be chosen: "H", "L" or "", with buttons and tools agreeing.
  std::string can_convert() {
    EXPECT_EQ(see().cmdH2L.enabled, see().tool("変換 H2L").enabled);
    EXPECT_EQ(see().cmdeqsl.enabled, see().tool("eQSL").enabled);
    EXPECT_EQ(see().cmdL2H.enabled, see().tool("変換 L2H").enabled);
    EXPECT_EQ(see().cmdH2L.enabled, see().cmdeqsl.enabled);
    return std::string(see().cmdH2L.enabled ? "H" : "") + (see().cmdL2H.enabled ? "L" : "");
  }

  TestFolder folder_;
  TestShell shell_;
  std::optional<MainWindow> window_;
};

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

TEST_F(MainWindowTest, OpensAHamlogCsv) {
  open("mnuOpen_csv", sample("hamlog.csv"));
  EXPECT_EQ(shell_.asked[0].title, "Hamlog v5.00以降のﾌｧｲﾙ *.csv を開く");
  EXPECT_EQ(see().lblInFile.text, (folder_ / "hamlog.csv").string());
  EXPECT_EQ(see().lblInFile.colour, Colour::kBlack);
  EXPECT_EQ(see().lblOutFile.text, (folder_ / "hamlog.adi").string());
  EXPECT_EQ(see().lblIn.text, "入力数: 48 件");
  EXPECT_EQ(see().lblConv.text,
            "Hamlog v5.00以降で作成した 新ＣＳＶ 形式ﾌｧｲﾙから\r\n"
            "Logger32 や eQSL.cc にて使用可能なADIF形式に変換します。 ");
  EXPECT_EQ(can_convert(), "H");
  EXPECT_TRUE(see().Option1[2].checked && see().Option1[2].enabled);
  EXPECT_FALSE(see().Option1[0].enabled || see().Option1[1].enabled || see().Option1[3].enabled);
  EXPECT_TRUE(see().Check[8].enabled && see().mnuDisp.enabled);
  EXPECT_EQ(see().lblJ2U[0].text, "JST - 9  --> UTC");
}

TEST_F(MainWindowTest, OpensAnAdif) {
  open("mnuOpen_csv", sample("hamlog.csv"));
  open("開 adi", sample("logger32.adi"));
  EXPECT_EQ(see().lblIn.text, "入力数: 17 件");
  EXPECT_EQ(shell_.asked.back().patterns, (std::vector<std::string>{"*.adi", "*.adif"}));
  EXPECT_TRUE(see().lblOutFile.text.ends_with("logger32.csv"));
  EXPECT_EQ(can_convert(), "L");
  EXPECT_TRUE(see().Option1[0].checked && see().Option1[1].enabled && see().Option1[3].enabled);
  EXPECT_FALSE(see().Option1[2].enabled || see().Check[8].enabled);
  window_->select_option1(1);
  EXPECT_EQ(see().lblJ2U[1].text, "全てを JST に変換");
  EXPECT_EQ(saved().time_conversion, 1);
  EXPECT_EQ(saved().zlog_time, "ALL_J_adi");
}

TEST_F(MainWindowTest, AsksHowToReadAnAdifThatWouldLoseContacts) {
  const auto hurt = folder_.text("lotw.adi", "<CALL:3>A1A\n<QSO_DATE:8>20240501\n<EOR>\n");
  open("開 adi", sample("logger32.adi"));
  EXPECT_TRUE(shell_.choices.empty());
  open("開 adi", hurt);
  ASSERT_EQ(shell_.choices.size(), 1U);
  EXPECT_TRUE(contains(shell_.choices[0].text, "1 件の交信のうち 1 件が失われます"));
  EXPECT_EQ(shell_.choices[0].answers.back(), "従来のまま");
  EXPECT_TRUE(see().lblInFile.text.ends_with("logger32.adi"));  // the user wanted none of it
  shell_.answers = {shell_.choices[0].answers.size() - 1};
  open("開 adi", hurt);
  EXPECT_TRUE(see().lblInFile.text.ends_with("lotw.adi"));
  window_->command("cmdL2H");
  EXPECT_EQ(see().lblInfo.text, "変換数: 0 件");
  EXPECT_TRUE(contains(see().lblNotes.text, "1 件が失われます"));
  EXPECT_TRUE(shell_.messages.empty());
}

TEST_F(MainWindowTest, OpensZlogLogs) {
  window_->select_option3(1);
  open("z 開 all", sample("contest.all"));
  EXPECT_EQ(see().cmdH2L.text, "変換　Z -> L");
  EXPECT_EQ(
      see().lblConv.text,
      "zLog の all 形式ファイルから\r\nLogger32 や eQSL.cc にて使用可能なADIF形式に変換します。 ");
  EXPECT_EQ(see().lblIn.text, "入力数: 16 件");
  EXPECT_EQ(can_convert(), "H");
  open("mnuOpen_zlog_zlo", sample("contest.zlo"));
  EXPECT_TRUE(see().lblConv.text.starts_with("zLog の zlo 形式ファイルから"));
  EXPECT_EQ(see().lblContest.text, "ALL JA コンテスト");
  open("mnuOpen_csv", sample("hamlog.csv"));
  EXPECT_EQ(see().cmdH2L.text, "変換　H -> L");
  EXPECT_EQ(see().lblContest.text, "");
}

// A .ZLO says its zone, or its contest does; what the user clicks wins, and stays for the logs that
// say nothing.
TEST_F(MainWindowTest, AZloIsReadInItsOwnZone) {
  const std::string jst_log = TestFolder::bytes_of(sample("contest.zlo"));
  const auto log = [&](std::string_view word, bool dx) {
    std::string bytes = jst_log;
    bytes.replace(84, 2, word);
    if (dx)
      bytes.replace(175, 16,
                    "\x0F"
                    "CQWW DX Contest");
    return folder_.file("a.zlo", bytes);
  };
  const auto zone_read = [&] {
    window_->command("cmdH2L");
    const std::string text = TestFolder::bytes_of(home() / "zlog_1.csv");
    EXPECT_EQ(see().Option3[1].checked, contains(text, "\"21:00J\""));
    EXPECT_EQ(see().Option3[0].checked, contains(text, "\"21:00U\""));
    EXPECT_EQ(see().Option3[1].colour == Colour::kLightBlue, see().Option3[1].checked);
    EXPECT_TRUE(contains(see().lblNotes.text, see().lblZone.text)) << see().lblZone.text;
    return see().lblZone.text;
  };
  const struct {
    std::string word;
    bool dx;
    const char* expected;
  } cases[] = {{"\xFF\x7F", true, "UTC (ファイルに記されている)"},
               {"\xFF\x7F", false, "UTC (ファイルに記されている)"},
               {"\xE4\xFD", true, "JST (ファイルに記されている)"},
               {{"\0\0", 2}, true, "UTC (DX コンテストなので)"},
               {"\xFF\xFF", false, "JST (DX コンテストではないので)"}};
  for (const auto& c : cases) {
    open("mnuOpen_zlog_zlo", log(c.word, c.dx));
    EXPECT_EQ(zone_read(), c.expected);
  }
  EXPECT_EQ(saved().zlog_in_jst, 0);  // nobody has chosen anything
  open("mnuOpen_csv", sample("hamlog.csv"));
  EXPECT_TRUE(see().Option3[0].checked && see().lblZone.text.empty());
  open("mnuOpen_zlog_zlo", log("\xFF\x7F", false));
  window_->select_option3(1);
  EXPECT_EQ(zone_read(), "JST (選んだもの。ファイルには UTC とあります)");
  EXPECT_EQ(see().lblZone.colour, Colour::kLightRed);
  EXPECT_EQ(saved().zlog_in_jst, 1);
  open("mnuOpen_zlog_zlo", log("\xFF\x7F", false));
  EXPECT_EQ(zone_read(), "UTC (ファイルに記されている)");
}

TEST_F(MainWindowTest, OfATextLogTheZoneIsAskedOnce) {
  open("z 開 all", sample("contest.all"));
  ASSERT_EQ(shell_.choices.size(), 1U);
  EXPECT_TRUE(window_->input().empty());  // no answer, no log
  EXPECT_EQ(can_convert(), "");
  shell_.answers = {1};
  window_->open_file(folder_ / "contest.all");
  EXPECT_TRUE(see().Option3[0].checked);
  EXPECT_EQ(see().lblZone.text, "UTC (選んだもの)");
  start();
  open("z 開 all", folder_ / "contest.all");
  EXPECT_EQ(shell_.choices.size(), 2U);
  EXPECT_EQ(see().lblZone.text, "UTC (選んだもの)");
  window_->select_option3(1);
  EXPECT_EQ(see().lblZone.text, "JST (選んだもの)");
  window_->command("cmdH2L");
  EXPECT_TRUE(TestFolder::bytes_of(folder_ / "contest.adi") ==
              TestFolder::bytes_of(fs::path(expected_folder()) / "contest.adi"));
  // Settings of an earlier version tell of the choice only when it was JST.
  for (const auto& [text, asked] : {std::pair("[Config]\nOp_3=1\n", 2U), {"[Config]\n", 3U}}) {
    folder_.text("home/Tobarine.ini", text);
    start();
    open("z 開 all", folder_ / "contest.all");
    EXPECT_EQ(shell_.choices.size(), asked);
  }
}

TEST_F(MainWindowTest, OpensAHamlogDatabase) {
  window_->bind_library = [](const fs::path&) {
    auto library = std::make_unique<StandInLibrary>();
    library->records.assign(3, std::vector<std::string>(14, "1"));
    return library;
  };
  open("開 hdb", folder_.text("Hamlog.hdb", "x"));
  EXPECT_EQ(shell_.asked[0].title, "THW5 の Hamlog.hdb 形式ファイル *.hdb を開く");
  EXPECT_EQ(see().lblConv.text,
            "THW5 の Hamlog.hdb 形式ﾌｧｲﾙから\r\n"
            "Logger32 や eQSL.cc にて使用可能なADIF形式に変換します。 ");
  EXPECT_EQ(see().lblIn.text, "入力数: 3 件");
  EXPECT_EQ(can_convert(), "H");
  window_->command("cmdeqsl");
  EXPECT_EQ(see().lblInfo.text, "変換数: 3 件");
}

TEST_F(MainWindowTest, HamlogsLibraryIsNeverTakenFromBesideADatabaseUnasked) {
  std::vector<std::string> tried;
  window_->bind_library = [&](const fs::path& database) -> std::unique_ptr<HamlogLibrary> {
    tried.push_back(window_->settings().hamlog_folder);
    if (tried.back() != path_text(folder_ / "hamlog")) throw HamlogLibraryMissing(database, "x");
    return std::make_unique<StandInLibrary>();
  };
  fs::create_directories(folder_ / "hamlog" / "data");
  folder_.file("hamlog/HAMLOG50.DLL", "x");
  const fs::path database = folder_.text("hamlog/data/Hamlog.hdb", "x");
  open("開 hdb", database);
  ASSERT_EQ(shell_.choices.size(), 1U);
  EXPECT_TRUE(contains(shell_.choices[0].text, "\n" + path_text(folder_ / "hamlog") + "\r"));
  EXPECT_EQ(shell_.messages.back().title, "!Tobarine");  // declined
  EXPECT_EQ(window_->settings().hamlog_folder, "");
  folder_.file("other.dll", "x");
  shell_.answers = {1};  // chooses another file, which is none
  shell_.files = {database, folder_ / "other.dll"};
  window_->command("mnuOpen_hdb");
  EXPECT_EQ(window_->settings().hamlog_folder, "");
  shell_.answers = {0};
  open("開 hdb", database);
  EXPECT_EQ(saved().hamlog_folder, path_text(folder_ / "hamlog"));
  const std::size_t asked = shell_.choices.size();
  open("開 hdb", database);
  EXPECT_EQ(shell_.choices.size(), asked);
  folder_.file("Hamlog.hdb", "x");  // none beside it
  window_->shared_settings().hamlog_folder.clear();
  open("開 hdb", folder_ / "Hamlog.hdb");
  EXPECT_EQ(shell_.choices.back().answers.size(), 1U);
}

TEST_F(MainWindowTest, RefusesTextLogsOfAnotherForm) {
  open("mnuOpen_zlog_all", folder_.text("a.all", "mon day time  callsign\r\n"));
  EXPECT_EQ(see().lblInFile.text, "入力ファイル形式が違います");
  EXPECT_EQ(see().lblConv.text,
            "「開く」での指定は ｚＬｏｇのＴＸＴ形式\r\n"
            "指定したファイル形式と「開く」でのファイル形式が違います。");
  for (const Control* label : {&see().lblInFile, &see().lblOutFile, &see().lblConv}) {
    EXPECT_EQ(label->colour, Colour::kLightRed);
  }
  EXPECT_EQ(can_convert(), "");
  open("mnuOpen_zlog_all", folder_.text("b.all", "x"));
  EXPECT_TRUE(see().lblConv.text.starts_with("「開く」での指定は ＨａｍｌｏｇのＴＸＴ形式"));
}

TEST_F(MainWindowTest, RefusesWhatIsNoLog) {
  open("mnuOpen_csv", folder_.text("old.csv", "JA1ABC,240501,2105J\r\n"));
  EXPECT_EQ(see().lblConv.text, "ﾌｧｲﾙ形式が [ 旧 ] なので不適切です。");
  EXPECT_EQ(see().lblConv.colour, Colour::kLightRed);
  EXPECT_EQ(can_convert(), "");
  EXPECT_TRUE(shell_.messages.empty());
  open("mnuOpen_csv", folder_.text("none.csv", "no comma"));
  open("mnuOpen_adi", folder_.text("none.adi", "no tag"));
  open("mnuOpen_zlog_zlo", folder_.text("none.zlo", "short"));
  open("mnuOpen_csv", folder_ / "missing.csv");
  window_->open_file(folder_.text("what.txt", "hello"));
  EXPECT_EQ(shell_.messages.size(), 5U);
  EXPECT_EQ(can_convert(), "");
  open("mnuOpen_hdb", folder_.text("Hamlog.hdb", "x"));
  EXPECT_TRUE(contains(shell_.messages.back().text, "CSV に出力"));
}

TEST_F(MainWindowTest, CancellingADialogChangesNothing) {
  open("mnuOpen_csv", sample("hamlog.csv"));
  for (const char* command :
       {"mnuOpen_csv", "mnuOpen_adi", "mnuOpen_zlog_all", "mnuOpen_zlog_zlo", "mnuOpen_hdb",
        "mnuMake_dxcc_hl_dat", "mnuLearn_codes", "mnuHamlo_csv_Edit"}) {
    window_->command(command);
  }
  EXPECT_EQ(see().lblIn.text, "入力数: 48 件");
  EXPECT_EQ(can_convert(), "H");
  EXPECT_TRUE(shell_.messages.empty() && shell_.edited.empty());
}

TEST_F(MainWindowTest, RecognisesDroppedFiles) {
  window_->open_file(sample("logger32.adi"));
  EXPECT_EQ(can_convert(), "L");
  window_->open_file(sample("contest.zlo"));
  EXPECT_EQ(can_convert(), "H");
  fs::copy(folder_ / "logger32.adi", folder_ / "log.txt");
  window_->open_file(folder_ / "log.txt");
  EXPECT_EQ(can_convert(), "L");
}

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
