#include <cerrno>
#include <gtest/gtest.h>

#include "test_folder.h"
#include "text/csv.h"
#include "text/error.h"
#include "text/folder.h"
#include "text/input_file.h"
#include "text/strings.h"
#include "text/temporary_file.h"

namespace tobarine {
namespace {

std::vector<std::string> lines_of(const std::filesystem::path& path) {
  LineReader reader(path);
  std::vector<std::string> lines;
  std::string_view line;
  while (reader.next(line)) lines.emplace_back(line);
  return lines;
}

using Rows = std::vector<std::vector<std::string>>;

Rows rows_of(const std::filesystem::path& path) {
  CsvReader reader(path);
  Rows rows;
  std::vector<std::string_view> fields;
  while (reader.next(fields)) rows.emplace_back(fields.begin(), fields.end());
  return rows;
}

TEST(LineReader, TakesBothLineEndsAndOneEndMark) {
  const TestFolder folder;
  using Lines = std::vector<std::string>;
  EXPECT_EQ(lines_of(folder.file("a", "a\r\nb\nc")), (Lines{"a", "b", "c"}));
  EXPECT_EQ(lines_of(folder.file("b", "a\r\n\r\n")), (Lines{"a", ""}));
  EXPECT_EQ(lines_of(folder.file("c", "a\r\n\x1A")), (Lines{"a"}));
  EXPECT_EQ(lines_of(folder.file("d",
                                 "a\x1A"
                                 "b\x1A\x1A")),
            (Lines{"a\x1A"
                   "b\x1A"}));
  EXPECT_EQ(lines_of(folder.file("e", "")), Lines{});
}

TEST(LineReader, LinesMayCrossItsBuffer) {
  const TestFolder folder;
  const std::string almost(262143, 'x');
  const auto lines = lines_of(folder.file("a", almost + "\r\n" + almost + "\r\nend\r\n"));
  ASSERT_EQ(lines.size(), 3U);
  EXPECT_EQ(lines[0], almost);
  EXPECT_EQ(lines[1], almost);
  EXPECT_EQ(lines[2], "end");
}

TEST(Readers, RefuseALineWithoutEndNamingIt) {
  const TestFolder folder;
  const auto file = folder.file("a", "ok\r\n" + std::string(3'000'000, 'x'));
  for (const auto read : {+[](const std::filesystem::path& p) { lines_of(p); },
                          +[](const std::filesystem::path& p) { rows_of(p); }}) {
    try {
      read(file);
      FAIL();
    } catch (const RecordError& error) {
      EXPECT_NE(std::string(error.what()).find("2 行目"), std::string::npos) << error.what();
    }
  }
  EXPECT_THROW(lines_of(folder / "none"), FileError);
  EXPECT_THROW(lines_of(folder.path()), FileError);
}

TEST(CsvReader, HonoursQuotes) {
  const TestFolder folder;
  const struct {
    const char* name;
    std::string text;
    Rows rows;
  } cases[] = {
      {"plain", "a,b\r\nc,d\n", {{"a", "b"}, {"c", "d"}}},
      {"comma and line end inside", "\"a,b\r\nc\",d\r\n", {{"a,b\r\nc", "d"}}},
      {"doubled quote", R"("a""b","""",x)", {{"a\"b", "\"", "x"}}},
      {"text behind the closing quote", R"("a"b"c,d)", {{"ab\"c", "d"}}},
      {"quote inside plain text", "a\"b,c\"\r\n", {{"a\"b", "c\""}}},
      {"empty fields", ",\"\",\r\n", {{"", "", ""}}},
      {"empty line", "a\r\n\r\n", {{"a"}, {""}}},
      {"unclosed", "x,\"a\r\nb,c", {{"x", "a\r\nb,c"}}},
      {"no line end, end mark", "a,b\x1A", {{"a", "b"}}},
      {"full-width", to_cp932("\"表,示\",ソ\r\n"), {{"表,示", "ソ"}}},
      {"broken character before a quote", "\"a\x81\",b\r\n", {{"a\U0010FF81", "b"}}},
  };
  for (const auto& c : cases) EXPECT_EQ(rows_of(folder.file("f", c.text)), c.rows) << c.name;
}

TEST(CsvReader, RecordsMayCrossItsBufferAnywhere) {
  const TestFolder folder;
  const std::string record = "\"a\"\"b\x82\xA0\",\"x\r\ny\",z\r\n";
  for (std::size_t padding = 262144 - 24; padding < 262144; ++padding) {
    const auto file = folder.file("f", std::string(padding, 'p') + ",\r\n" + record + record);
    const Rows rows = rows_of(file);
    ASSERT_EQ(rows.size(), 3U) << padding;
    const std::vector<std::string> expected = {"a\"bあ", "x\r\ny", "z"};
    EXPECT_EQ(rows[1], expected) << padding;
    EXPECT_EQ(rows[2], expected) << padding;
  }
}

TEST(CsvReader, KnowsItsLines) {
  const TestFolder folder;
  CsvReader reader(folder.file("f", "\"a\r\nb\",c\r\nd\r\n\"e\r\nf"));
  std::vector<std::string_view> fields;
  ASSERT_TRUE(reader.next(fields));
  EXPECT_EQ(reader.line(), 1U);
  ASSERT_TRUE(reader.next(fields));
  EXPECT_EQ(reader.line(), 3U);
  EXPECT_FALSE(reader.unclosed_quote());
  ASSERT_TRUE(reader.next(fields));
  EXPECT_EQ(reader.line(), 4U);
  EXPECT_EQ(reader.last_line(), 5U);
  EXPECT_TRUE(reader.unclosed_quote());
}

TEST(Input, ThatChangesWhileItIsReadIsTold) {
  const TestFolder folder;
  const auto log = folder.file("log", "first\r\nlast\r\n");
  std::string_view line;
  {
    LineReader lines(log);
    const InputWatch watch(log);
    while (lines.next(line)) {
    }
    EXPECT_NO_THROW(watch.check());
  }
  InputFile file(log);
  char byte = 0;
  ASSERT_EQ(file.read(&byte, 1), 1U);
  const InputWatch appended(log);
  folder.file("log", "first\r\nlast\r\nand more\r\n");
  std::string rest(1000, ' ');
  EXPECT_THROW(file.read(rest.data(), rest.size()), FileError);
  EXPECT_THROW(appended.check(), FileError);
  const InputWatch replaced(log);
  const auto other = folder.file("other", TestFolder::bytes_of(log));
  std::filesystem::last_write_time(other, std::filesystem::last_write_time(log));
  std::filesystem::rename(other, log);
  EXPECT_THROW(replaced.check(), FileError);
}

TEST(TemporaryFile, IsPrivateUntilItTakesAPlace) {
  using std::filesystem::perms;
  const TestFolder folder;
  const auto mode = [](const std::filesystem::path& file) {
    return std::filesystem::status(file).permissions();
  };
  const auto usual = mode(folder.file("usual", ""));
  const auto old = folder.file("old", "");
  std::filesystem::permissions(old, perms::owner_all);
  for (const auto& [name, expected] : {std::pair{"new", usual}, {"old", perms::owner_all}}) {
    TemporaryFile file({folder / "none", folder.path()}, std::string(300, 'n'));
    EXPECT_EQ(mode(file.path()), perms::owner_read | perms::owner_write);
    file.take_mode_of(folder / name);
    file.replace(folder / name);
    EXPECT_EQ(mode(folder / name), expected) << name;
  }
  { const ScratchFile scratch({folder.path()}, "scratch"); }
  const std::filesystem::directory_iterator left(folder.path());
  EXPECT_EQ(std::distance(begin(left), end(left)), 3);
}

TEST(Folder, NamesMatchWithoutRegardToCase) {
  const TestFolder folder;
  folder.file("Band_tbl.ini", "");
  EXPECT_TRUE(
      std::filesystem::equivalent(file_in(folder.path(), "band_tbl.ini"), folder / "Band_tbl.ini"));
  EXPECT_EQ(file_in(folder.path(), "none.ini"), folder / "none.ini");
}

TEST(Error, TellsOneCleanLineInJapanese) {
  EXPECT_STREQ(FileError("a\x1B[2J\n.csv", "だめ\r\n").what(), "a␛[2J␊.csv: だめ␍␊");
  EXPECT_STREQ(UsageError("x\x07").what(), "x␇");
  for (const int number :
       {ENOENT, EACCES, EIO, EMFILE, ENAMETOOLONG, ENOSPC, EXDEV, EPIPE, ELOOP}) {
    EXPECT_FALSE(contains(system_reason(number), "システムのエラー")) << number;
  }
  EXPECT_EQ(system_reason(4321), "システムのエラー 4321");
  const TestFolder folder;
  const auto missing = folder / "none" / "a.csv";
  EXPECT_TRUE(
      system_reason(ENOENT, missing).starts_with("フォルダー " + path_text(folder / "none")));
  EXPECT_TRUE(system_reason(ENOENT, folder / "a.csv").starts_with("ファイルがありません"));
  // The file system's own numbers, which Windows has of its own.
  EXPECT_TRUE(system_reason(std::make_error_code(std::errc::no_space_on_device), folder / "a")
                  .starts_with("ディスクの空き"));
}

}  // namespace
}  // namespace tobarine
