#include "app/program_folder.h"

#include <gtest/gtest.h>

#include "app/delivered_files.h"
#include "app/log_kind.h"
#include "paths.h"
#include "test_folder.h"
#include "text/error.h"
#include "text/strings.h"
#include "text/temporary_file.h"

namespace tobarine {
namespace {

namespace fs = std::filesystem;

TEST(ProgramFolder, IsLookedForInOrder) {
  const TestFolder root;
  for (const char* name : {"bin", "share/tobarine", "data/tobarine", "home"}) {
    fs::create_directories(root / name);
  }
  FolderHints hints{"", root / "bin" / "tobarine-cli", root / "data"};
  EXPECT_THROW(locate_program_folder(hints), FileError);
  root.file("share/tobarine/h2l_cty.mas", "installed");
  const ProgramFolder installed = locate_program_folder(hints);
  EXPECT_EQ(installed.path, root / "share/tobarine");
  EXPECT_EQ(writable_folder(installed), root / "data/tobarine");
  EXPECT_EQ(TestFolder::bytes_of(root / "data/tobarine/h2l_cty.mas"), "installed");
  EXPECT_EQ(locate_program_folder(hints).path, root / "data/tobarine");
  root.file("bin/H2L_CTY.MAS", "");
  EXPECT_EQ(locate_program_folder(hints).path, root / "bin");
  hints.home = root / "home";
  EXPECT_EQ(locate_program_folder(hints).path, root / "home");
  hints.home = root / "none";
  EXPECT_THROW(locate_program_folder(hints), FileError);
  hints = {"", root / "other" / "tobarine-cli", ""};
  fs::rename(root / "bin", root / "other");
  EXPECT_EQ(writable_folder(locate_program_folder(hints)), root / "other");
  fs::remove(root / "other/H2L_CTY.MAS");
  EXPECT_THROW(writable_folder(locate_program_folder(hints)),
               FileError);  // no HOME: no "./tobarine"
}

// As an installed package and its user see them.
class DeliveryTest : public ::testing::Test {
 protected:
  DeliveryTest() {
    for (const char* name : {"bin", "share/tobarine"}) fs::create_directories(root_ / name);
    for (const std::string& name : reference_files()) root_.file("share/tobarine/" + name, "1");
  }
  fs::path user() const { return root_ / "data/tobarine"; }
  ProgramFolder locate() const {
    return locate_program_folder({"", root_ / "bin" / "tobarine-cli", root_ / "data"});
  }
  std::string refresh(bool told = true) const { return refresh_user_copy(locate(), told); }
  void deliver(const std::string& name, const std::string& bytes) const {
    root_.file("share/tobarine/" + name, bytes);
  }
  std::string users(const std::string& name) const { return TestFolder::bytes_of(user() / name); }

  TestFolder root_;
};

TEST_F(DeliveryTest, AnIncompleteCopyHealsAndKeepsWhatTheUserHas) {
  fs::create_directories(user());
  root_.file("data/tobarine/H2L_CTY.MAS", "his");  // what a first start that was ended once left
  root_.file("data/tobarine/Tobarine.ini", "his");
  EXPECT_EQ(locate().path, user());
  EXPECT_TRUE(contains(refresh(), "補いました: JCC_JCG.mas、"));
  EXPECT_EQ(missing_reference_files(user()), std::vector<std::string>{});
  EXPECT_EQ(users("H2L_CTY.MAS") + users("Tobarine.ini"), "hishis");
  EXPECT_EQ(users("dxcc_hl.dat"), "1");
  EXPECT_EQ(refresh(), "");
  deliver("new_table.dat", "2");  // an update brings a file that was not there before
  EXPECT_TRUE(contains(refresh(), "補いました: new_table.dat\n"));
}

TEST_F(DeliveryTest, WhatIsStillAsDeliveredIsRenewed) {
  writable_folder(locate());
  root_.file("data/tobarine/dxcc_hl.dat", "learned");
  EXPECT_EQ(refresh(), "");
  for (const char* name : {"dxcc_hl.dat", "JCC_JCG.mas"}) deliver(name, "2");
  EXPECT_TRUE(contains(refresh(false), "dxcc_hl.dat"));  // nobody has read that
  const std::string text = refresh();
  EXPECT_EQ(users("JCC_JCG.mas") + users("dxcc_hl.dat"), "2learned");
  EXPECT_TRUE(contains(text, "あります: dxcc_hl.dat。") && contains(text, path_text(user())));
  EXPECT_EQ(refresh(), "");
  fs::rename(user() / "dxcc_hl.dat", user() / "mine.dat");  // as the text says
  EXPECT_TRUE(contains(refresh(), "補いました: dxcc_hl.dat\n"));
  deliver("dxcc_hl.dat", "3");
  EXPECT_TRUE(contains(refresh(), "新しい版のファイルにしました: dxcc_hl.dat\n"));
  EXPECT_EQ(users("dxcc_hl.dat"), "3");
}

TEST_F(DeliveryTest, CopiesFromBeforeThereWasARecordCount) {
  writable_folder(locate());
  // As delivered first: twenty modes, all rows in use.
  std::string modes;
  int row = 0;
  for (const char* mode :
       {"RTTY\",\"RTY",   "PSK31\",\"P31",       "PSK63\",\"P63",  "PSK125\",\"P12",
        "QPSK31\",\"Q31", "DIGITALVOICE\",\"DV", "C4FM\",\"C4F",   "SSTV\",\"STV",
        "HELL\",\"HEL",   "MFSK\",\"MFS",        "OLIVIA\",\"OLI", "JT65\",\"J65",
        "JT6M\",\"J6M",   "JT44\",\"J44",        "FSK441\",\"F44", "MSK144\",\"MSK",
        "MT63\",\"M63",   "THOR\",\"THR",        "DOMINO\",\"DOM", "CONTESTI\",\"CTI"}) {
    modes += '"' + std::to_string(++row) + "\",\"" + mode + "\"\r\n";
  }
  for (const std::string& copy : {modes, modes + " "}) {
    fs::remove(user() / kDeliveryRecord);
    root_.file("data/tobarine/mode_tbl.ini", copy);
    const bool as_delivered = copy == modes;
    EXPECT_TRUE(
        contains(refresh(), as_delivered ? "しました: mode_tbl.ini\n" : "あります: mode_tbl"));
    EXPECT_EQ(users("mode_tbl.ini"), as_delivered ? "1" : copy);
  }
}

TEST_F(DeliveryTest, AFolderThatCannotBeWrittenGivesWayToTheUsersCopy) {
  fs::remove_all(root_ / "bin");
  fs::rename(root_ / "share/tobarine", root_ / "bin");
  for (const char* other : {"bin/Tobarine.exe", "bin/tobarine-cli", "bin/Hamlog.hdb"}) {
    root_.file(other, "no data");
  }
  root_.file("bin/Tobarine.ini", "preset");
  EXPECT_EQ(writable_folder(locate()), root_ / "bin");
  // As where the folder cannot be written, which root can everywhere.
  const ProgramFolder locked{root_ / "gone", {}, user()};
  std::string asked;
  for (const bool answer : {false, true}) {
    const auto usable = usable_folder(locked, [&](const std::string& question) {
      asked = question;
      return answer;
    });
    EXPECT_EQ(usable.has_value(), answer);
    EXPECT_TRUE(contains(asked, path_text(user())));
  }
  EXPECT_THROW(usable_folder({root_ / "gone", {}, {}}, nullptr), FileError);
  fs::remove_all(user());
  EXPECT_EQ(usable_folder(locate(), nullptr), root_ / "bin");
  make_user_copy(locate());
  EXPECT_EQ(locate().path, root_ / "bin");
  EXPECT_EQ(users("Tobarine.ini"), "preset");
  for (const char* other : {"Tobarine.exe", "tobarine-cli", "Hamlog.hdb"}) {
    EXPECT_FALSE(fs::exists(user() / other)) << other;
  }
  fs::permissions(root_ / "bin", fs::perms::owner_read | fs::perms::owner_exec);
  if (!can_write_into(root_ / "bin")) {  // root writes everywhere
    EXPECT_EQ(locate().path, user());
    EXPECT_EQ(refresh(), "");
  }
  fs::permissions(root_ / "bin", fs::perms::owner_all);
}

TEST_F(DeliveryTest, EveryDeliveredFileCountsAsData) {
  const fs::path copy = root_ / "copy";
  fs::create_directories(copy);
  copy_delivered_files(delivered_folder(), copy);
  for (const auto& entry : fs::directory_iterator(fs::path(delivered_folder()))) {
    EXPECT_TRUE(fs::exists(copy / entry.path().filename())) << entry.path();
  }
}

TEST_F(DeliveryTest, CopiesThatWereNeverFinishedGo) {
  // No process has so high a number.
  const fs::path dead = root_ / "data/tobarine.tobarine-2147483646-1.tmp";
  const fs::path running = root_ / "data" / temporary_name("tobarine");
  for (const fs::path& copy : {dead, running}) fs::create_directories(copy / "inside");
  refresh_user_copy(locate(), true);
  EXPECT_FALSE(fs::exists(dead));
  EXPECT_TRUE(fs::exists(running / "inside"));
}

TEST(ProgramFolder, TheDeliveredFilesAreComplete) {
  EXPECT_EQ(missing_reference_files(delivered_folder()), std::vector<std::string>{});
  const std::string expected = fs::path("/a/b/").make_preferred().string();
  EXPECT_EQ(folder_text("/a/b"), expected);
  EXPECT_EQ(folder_text("/a/b/"), expected);
}

TEST(LogKind, FromNameThenFromTheFirstLine) {
  EXPECT_EQ(recognise_log("a.CSV", ""), LogKind::kHamlogCsv);
  EXPECT_EQ(recognise_log("x.b.Zlo", "a,b"), LogKind::kZlogZlo);
  EXPECT_EQ(recognise_log("loglist.txt", "JA1ABC,24/05/01,"), LogKind::kHamlogCsv);
  EXPECT_EQ(recognise_log("log", "zLog for Windows "), LogKind::kZlogAll);
  EXPECT_EQ(recognise_log("log", "<call:6>JA1ABC"), LogKind::kAdif);
  EXPECT_EQ(recognise_log("log", "hello"), std::nullopt);
  EXPECT_EQ(log_kind_from_name("z_all"), LogKind::kZlogAll);
  EXPECT_EQ(log_kind_from_name("x"), std::nullopt);
}

}  // namespace
}  // namespace tobarine
