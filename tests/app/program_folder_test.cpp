#include "app/program_folder.h"

#include <gtest/gtest.h>

#include "app/log_kind.h"
#include "paths.h"
#include "test_folder.h"
#include "text/error.h"

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
  EXPECT_EQ(make_user_copy(installed), root / "data/tobarine");
  EXPECT_EQ(TestFolder::bytes_of(root / "data/tobarine/h2l_cty.mas"), "installed");
  EXPECT_EQ(locate_program_folder(hints).path, root / "data/tobarine");
  root.file("bin/H2L_CTY.MAS", "");
  EXPECT_EQ(locate_program_folder(hints).path, root / "bin");
  hints.home = root / "home";
  EXPECT_EQ(locate_program_folder(hints).path, root / "home");
  hints.home = root / "none";
  EXPECT_THROW(locate_program_folder(hints), FileError);
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
