#include "app/start_up.h"

#include <gtest/gtest.h>

#include "app/program_folder.h"
#include "rules/version.h"
#include "test_folder.h"
#include "text/folder.h"
#include "text/strings.h"

namespace tobarine {
namespace {

class StartUpTest : public ::testing::Test {
 protected:
  StartUpTest() {
    for (const std::string& name : reference_files()) folder_.file(name, "");
    input_.folder = folder_.path();
    input_.windows_folder = "C:\\WINDOWS";
    input_.local_time.tm_year = 126;
    input_.local_time.tm_mon = 10;
    input_.local_time.tm_mday = 15;
    input_.local_time.tm_hour = 23;
    input_.local_time.tm_min = 41;
  }

  std::string log() const { return TestFolder::bytes_of(folder_ / "20261115_234100.txt"); }

  TestFolder folder_;
  StartUpInput input_;
};

TEST_F(StartUpTest, TheFirstStartWritesSettingsAndTracesThem) {
  const StartUp start = start_up(input_);
  EXPECT_FALSE(start.stop);
  EXPECT_EQ(start.missing_flag, "0");
  EXPECT_EQ(start.drive, start.folder.substr(0, 3));
  const std::string settings = TestFolder::bytes_of(folder_ / "Tobarine.ini");
  EXPECT_EQ(log(), "Tobarine_log.txt\r\nstrPath : " + folder_text(folder_.path()) +
                       "\r\nwin_dir : C:\\WINDOWS\r\nini_write_new:\r\n" + settings +
                       "Tobarine.Show\r\n");
}

TEST_F(StartUpTest, ALaterStartLeavesTheSettingsAlone) {
  const auto file = folder_.text("TOBARINE.INI", "[Config]\r\nChk_7=1\r\n");
  StartUp start = start_up(input_);
  EXPECT_EQ(start.settings.slash_call_in_comment, 1);
  EXPECT_EQ(start.settings.write_trace_log, "1");
  EXPECT_EQ(TestFolder::bytes_of(file), "[Config]\r\nChk_7=1\r\n");
  EXPECT_FALSE(contains(log(), "ini_write_new"));
  start.settings.write_trace_log = "0";
  start.trace_line("not written");
  start.settings.write_trace_log = "1";
  start.trace_line("書く");
  EXPECT_TRUE(log().ends_with("Tobarine.Show\r\n" + to_cp932("書く") + "\r\n"));
}

TEST_F(StartUpTest, WithoutTracingThereIsNoLogAndLinesAreHarmless) {
  folder_.text("Tobarine.ini", "[Config]\r\nChk_15=0\r\n");
  StartUp start = start_up(input_);
  start.settings.write_trace_log = "1";  // switched on during the run
  start.trace_line("nowhere");
  EXPECT_FALSE(std::filesystem::exists(folder_ / "20261115_234100.txt"));
}

TEST_F(StartUpTest, MissingFilesStopTheStart) {
  std::filesystem::remove(folder_ / "dxcc_mas.txt");
  std::filesystem::remove(folder_ / "mode_tbl.ini");
  const StartUp start = start_up(input_);
  ASSERT_TRUE(start.stop);
  EXPECT_EQ(start.missing_flag, "1");
  const std::string path = folder_text(folder_.path());
  EXPECT_EQ(start.stop->text,
            path + "dxcc_mas.txt\r\n\r\n" + path + "mode_tbl.ini\r\n\r\n\r\n" +
                "一旦、終了しますので、不足ファイルをコピー後に再度起動して下さい");
  EXPECT_EQ(start.stop->title,
            "　　必要なファイルがありません！　 Tobarine.exe　" + std::string(kVersion));
  EXPECT_FALSE(std::filesystem::exists(folder_ / "Tobarine.ini"));
}

}  // namespace
}  // namespace tobarine
