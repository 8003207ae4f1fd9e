// The main window's open commands.
#include "app/main_window_fixture.h"
#include "hamlog/stand_in_library.h"
#include "paths.h"
#include "text/strings.h"

namespace tobarine {
namespace {

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

}  // namespace
}  // namespace tobarine
