#include "text/output_file.h"

#include <array>
#include <gtest/gtest.h>

#include "test_folder.h"
#include "text/error.h"
#include "text/file_identity.h"
#ifndef _WIN32
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace tobarine {
namespace {

namespace fs = std::filesystem;

// A file of the user's own is kept; the time is always the same.
KeepRule rule_of(std::vector<std::string>& told) {
  const auto now = [] {
    std::tm time{};
    time.tm_year = 2026 - 1900;
    time.tm_mon = 10;
    time.tm_mday = 21;
    time.tm_hour = 9;
    return time;
  };
  return {[](const fs::path& file) { return begins_with(file, "ours"); }, now,
          [&told](const fs::path& file, const fs::path& backup) {
            told.push_back(path_text(file.filename()) + " " + path_text(backup.filename()));
          }};
}

void write(const fs::path& path, std::string_view bytes, const KeepRule& rule) {
  OutputFile file(path, rule);
  file.buffer() = bytes;
  file.close();
}

TEST(OutputFile, AFullDiskIsToldAndAReplacedFileStays) {
  OutputFile full("/dev/full");
  full.buffer() = "text";
  EXPECT_THROW(full.close(), FileError);
  const TestFolder folder;
  fs::create_directory(folder / "target");
  EXPECT_THROW(replace_file(folder / "target", "x"), FileError);
  EXPECT_THROW(replace_file(folder / "no" / "file", "x"), FileError);
  const auto file = folder.file("f", "old");
  replace_text_file(file, "新\n");
  EXPECT_EQ(TestFolder::bytes_of(file), "\x90\x56\r\n");
  EXPECT_FALSE(fs::exists(folder / "f.tmp"));
}

TEST(OutputFile, WhatTheUserMayStillNeedIsRenamed) {
  const TestFolder folder;
  std::vector<std::string> told;
  const KeepRule rule = rule_of(told);
  const fs::path log = folder.file("my.csv", "the user's");
  fs::permissions(log, fs::perms::owner_read | fs::perms::owner_write);
  write(log, "ours, 1", rule);
  write(log, "ours, 2", rule);  // may go
  EXPECT_EQ(TestFolder::bytes_of(log), "ours, 2");
  EXPECT_EQ(fs::status(log).permissions(), fs::perms::owner_read | fs::perms::owner_write);
  folder.file("my.csv", "his again");
  write(log, "ours, 3", rule);
  EXPECT_EQ(told, (std::vector<std::string>{"my.csv my.csv.20261121-090000.bak",
                                            "my.csv my.csv.20261121-090000-2.bak"}));
  EXPECT_EQ(TestFolder::bytes_of(folder / "my.csv.20261121-090000.bak"), "the user's");
  EXPECT_EQ(TestFolder::bytes_of(folder / "my.csv.20261121-090000-2.bak"), "his again");
  write(folder.file("empty", ""), "x", rule);
  write(folder / "new", "x", rule);
  write("/dev/null", "x", rule);
  EXPECT_EQ(told.size(), 2U);
  folder.file("my.csv", "his");
  replace_file(log, "ours, 4", rule);
  EXPECT_EQ(told.back(), "my.csv my.csv.20261121-090000-3.bak");
  write(log, "ours, 5", {});  // without a rule all may go
  EXPECT_EQ(told.size(), 3U);
  EXPECT_FALSE(is_kept(log, rule) || is_kept(folder / "empty2", rule));
}

TEST(OutputFile, NobodyElseWritesMeanwhile) {
  const TestFolder folder;
  std::vector<std::string> told;
  const fs::path log = folder / "log";
  const auto other_name = folder / "other";
  {
    OutputFile first(log);
    first.buffer() = "first";
    first.flush();
    fs::create_hard_link(log, other_name);
    EXPECT_THROW(OutputFile(log, rule_of(told)), FileError);
    EXPECT_THROW(OutputFile{other_name}, FileError);
    first.close();
  }
  EXPECT_EQ(TestFolder::bytes_of(log), "first");
  EXPECT_TRUE(told.empty());
  write(log, "second", {});
  EXPECT_EQ(TestFolder::bytes_of(log), "second");
}

#ifndef _WIN32
TEST(OutputFile, AFailedWriteLeavesWholeRecords) {
  const TestFolder folder;
  survive_size_limit();
  rlimit before{};
  getrlimit(RLIMIT_FSIZE, &before);
  for (const rlim_t limit : {0, 9, 10, 29, 30, 39}) {
    OutputFile file(folder / "log");
    for (int i = 0; i < 4; ++i) {
      file.buffer() += "0123456789";
      file.end_record();
    }
    const rlimit small{limit, before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
    EXPECT_THROW(file.flush(), FileError);
    setrlimit(RLIMIT_FSIZE, &before);
    EXPECT_EQ(file.records(), limit / 10);
    EXPECT_EQ(fs::file_size(folder / "log"), limit / 10 * 10);
    file.buffer() += "end";  // goes on where the file ends now
    file.close();
    EXPECT_TRUE(TestFolder::bytes_of(folder / "log").ends_with(limit < 10 ? "end" : "9end"));
  }
}

TEST(ReplacedFiles, KeepTheirModeAndTheirLinks) {
  const TestFolder folder;
  std::vector<std::string> told;
  const fs::path table = folder.file("table", "old");
  fs::permissions(table, fs::perms::owner_read | fs::perms::owner_write);
  fs::create_symlink("table", folder / "link");
  replace_file(folder / "link", "new");
  EXPECT_EQ(TestFolder::bytes_of(table), "new");
  EXPECT_EQ(fs::status(table).permissions(), fs::perms::owner_read | fs::perms::owner_write);
  write(folder / "link", "ours", rule_of(told));
  EXPECT_EQ(told, std::vector<std::string>{"table table.20261121-090000.bak"});
  fs::create_symlink("none", folder / "dangling");
  replace_file(folder / "dangling", "x");
  EXPECT_EQ(TestFolder::bytes_of(folder / "none"), "x");
  EXPECT_TRUE(fs::is_symlink(folder / "link") && fs::is_symlink(folder / "dangling"));
  const fs::path pipe = folder / "pipe";
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  const int reader = open(pipe.c_str(), O_RDWR | O_NONBLOCK);
  replace_file(pipe, "through it");
  std::array<char, 20> read_back{};
  EXPECT_EQ(read(reader, read_back.data(), read_back.size()), 10);
  close(reader);
  EXPECT_TRUE(fs::is_fifo(pipe));
}

TEST(SameFile, IsToldByWhatIsOnTheDisk) {
  const TestFolder folder;
  const fs::path a = folder.file("a", "x");
  const fs::path b = folder.file("b", "x");
  fs::create_hard_link(a, folder / "hard");
  fs::create_symlink("a", folder / "soft");
  fs::create_symlink("later", folder / "early");
  fs::create_directory(folder / "sub");
  for (const auto& [one, two, same] : {std::tuple{a, folder / "hard", true},
                                       {a, folder / "soft", true},
                                       {a, folder / "sub" / ".." / "a", true},
                                       {folder / "later", folder / "early", true},
                                       {folder / "later", folder / "sub" / ".." / "later", true},
                                       {a, b, false},
                                       {a, folder / "later", false},
                                       {a, fs::path(), false},
                                       {"/dev/null", "/dev/null", false}}) {
    EXPECT_EQ(same_file(one, two), same) << one << two;
    EXPECT_EQ(same_file(two, one), same) << two << one;
  }
  EXPECT_THROW(refuse_shared_files({a, b}, {"", folder / "hard"}), UsageError);
  EXPECT_THROW(refuse_shared_files({a}, {folder / "later", b, folder / "early"}), UsageError);
  EXPECT_NO_THROW(refuse_shared_files({a, a, ""}, {b, folder / "later", ""}));
}
#endif

}  // namespace
}  // namespace tobarine
