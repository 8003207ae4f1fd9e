// Editing in grids and of whole files, and the scroll range of the list box.
#include <gtest/gtest.h>
#include <map>

#include "app/list_box.h"
#include "editors/file_editor.h"
#include "editors/grid_editor.h"
#include "test_folder.h"
#include "text/error.h"
#include "text/line_index.h"

namespace tobarine {
namespace {

using Key = GridEditor::Key;

GridEditor grid() {
  GridEditor grid({" No", " ADIF", "  CSV"}, 3, 3);
  grid.set_cell(1, 1, "RTTY");
  return grid;
}

TEST(GridEditor, ATypedCharacterReplacesTheText) {
  GridEditor g = grid();
  EXPECT_TRUE(g.type("a"));
  EXPECT_EQ(g.text(), "a");
  EXPECT_EQ(g.cell(1, 1), "RTTY");  // until it is stored
  g.press(Key::kEnter);
  EXPECT_EQ(g.cell(1, 1), "a");
  EXPECT_FALSE(g.editing());
  EXPECT_TRUE(g.type("漢"));
  EXPECT_FALSE(grid().type(" ") || grid().type("\x1B") || grid().type(""));
}

TEST(GridEditor, EnterOpensTheTextAndEscapeLeavesItAsItWas) {
  GridEditor g = grid();
  g.open();
  EXPECT_EQ(g.text(), "RTTY");
  g.set_text("CW");
  g.press(Key::kEscape);
  g.grid_focused();
  EXPECT_EQ(g.cell(1, 1), "RTTY");
  g.open();
  g.set_text("CW");
  g.grid_focused();  // a click elsewhere in the grid
  EXPECT_EQ(g.cell(1, 1), "CW");
}

TEST(GridEditor, KeysMoveOnWithinTheGrid) {
  GridEditor g = grid();
  const auto at = [&g] { return std::pair(g.row(), g.column()); };
  const auto after = [&](Key key) {
    g.open();
    g.press(key);
    return at();
  };
  EXPECT_EQ(after(Key::kUp), std::pair(std::size_t{1}, std::size_t{1}));  // not into the header
  EXPECT_EQ(after(Key::kEnter), std::pair(std::size_t{1}, std::size_t{2}));
  EXPECT_EQ(after(Key::kTab), std::pair(std::size_t{2}, std::size_t{0}));
  EXPECT_EQ(after(Key::kDown), std::pair(std::size_t{3}, std::size_t{0}));
  EXPECT_EQ(after(Key::kDown), std::pair(std::size_t{3}, std::size_t{0}));
  g.go_to(3, 2);
  EXPECT_EQ(after(Key::kEnter), std::pair(std::size_t{3}, std::size_t{2}));
  g.moves_down = true;
  g.go_to(1, 1);
  EXPECT_EQ(after(Key::kEnter), std::pair(std::size_t{2}, std::size_t{1}));
}

TEST(GridEditor, NumbersAndRowsThatAreNotSavedAreOnlyLookedAt) {
  GridEditor g({" No", " ADIF"}, 3, 2);
  std::string told;
  g.tell = [&told](bool changed) { told += changed ? 'c' : 'r'; };
  g.go_to(2, 0);
  EXPECT_FALSE(g.type("9") || g.open() || g.editing());
  g.go_to(3, 1);
  EXPECT_FALSE(g.type("a"));
  g.go_to(2, 1);
  EXPECT_TRUE(g.type("a"));
  g.press(Key::kEnter);
  g.go_to(2, 1);
  g.open();
  g.grid_focused();  // stored as it was
  EXPECT_EQ(told, "rrrc");
  EXPECT_EQ(g.cell(2, 0) + g.cell(3, 1), "2");
}

TEST(FileEditor, SavingUnchangedTextLeavesEveryByte) {
  const TestFolder folder;
  for (const std::string bytes : {"a\r\nb\r\n", "a\nb", "\x82\xA0\xFF\x80\xA0\r\n\n\r\nx\x1A",
                                  "one\r\ntwo\nthree\r\n", "\n", "a\rb"}) {
    FileEditor editor(folder.file("f.csv", bytes));
    editor.save(editor.text());
    EXPECT_EQ(TestFolder::bytes_of(folder / "f.csv"), bytes);
  }
}

TEST(FileEditor, TheFileIsNeverShortened) {
  const TestFolder folder;
  FileEditor editor(folder.text("f.csv", "一行目\r\n二行目\r\n"));
  EXPECT_EQ(editor.caption(), (folder / "f.csv").string() + " ");
  EXPECT_EQ(editor.text(), "一行目\n二行目\n");
  EXPECT_EQ(editor.save("一行目\n").behind, 8U);
  EXPECT_EQ(TestFolder::bytes_of(folder / "f.csv"), to_cp932("一行目\r\n二行目\r\n"));
  EXPECT_EQ(editor.save(editor.text()).behind, 0U);
  EXPECT_EQ(editor.save("一行目\n").behind, 8U);
  EXPECT_EQ(editor.save_as(folder / "g.csv", "一行目\n").behind, 0U);
  EXPECT_EQ(TestFolder::bytes_of(folder / "g.csv"), to_cp932("一行目\r\n"));
  EXPECT_EQ(editor.caption(), (folder / "g.csv").string() + " ");
  EXPECT_THROW(editor.save_as(folder / "none/g.csv", "x"), FileError);
  EXPECT_EQ(editor.file(), folder / "g.csv");
}

TEST(FileEditor, LinesKeepTheirEndsAroundAChange) {
  const TestFolder folder;
  FileEditor editor(folder.file("f.csv", "a\nb\r\nc\nd\n"));
  EXPECT_EQ(editor.save("a\nb2\nnew\nc\nd\n").lacking, 0U);
  EXPECT_EQ(TestFolder::bytes_of(folder / "f.csv"), "a\nb2\r\nnew\r\nc\nd\n");
  EXPECT_EQ(editor.save("\U0001F600").lacking, 1U);
}

TEST(FileEditor, AnEmptyOrUnreadableFileIsRefused) {
  const TestFolder folder;
  EXPECT_THROW(FileEditor(folder.file("f.csv", "")), FileError);
  EXPECT_THROW(FileEditor(folder / "none.csv"), FileError);
  FileEditor editor(folder.file("gone.csv", "a"));
  std::filesystem::remove(folder / "gone.csv");
  EXPECT_THROW(editor.save("b"), FileError);
}

struct FakeListBox : ListBox {
  void add(std::string_view line, std::optional<std::size_t> position) override {
    lines.insert(position ? lines.begin() + static_cast<std::ptrdiff_t>(*position) : lines.end(),
                 std::string(line));
  }
  int width_twips() const override { return 1500; }  // 100 pixels
  int twips_per_pixel_y() const override { return 15; }
  int text_width(std::size_t bytes) const override { return static_cast<int>(bytes) * 10; }
  void set_horizontal_extent(int pixels) override { extents.push_back(pixels); }
  std::vector<std::string> lines;
  std::vector<int> extents;
};

TEST(ListBoxHS, TheExtentFollowsTheWidestLine) {
  FakeListBox box;
  ListBoxHS range(box);
  EXPECT_EQ(range.measure(to_cp932("漢字")), 50);  // four bytes and one more
  range.add_line("123456789");                     // as wide as the box
  EXPECT_EQ(box.extents, std::vector<int>{0});
  range.add_line("1234567890");
  range.add_line("short", 0);
  EXPECT_EQ(box.extents, (std::vector<int>{0, 110}));
  EXPECT_EQ(box.lines[0], "short");
  range.auto_update = false;
  range.add_line("a line that is longer");
  EXPECT_EQ(box.extents.size(), 2U);
  range.update_extent();
  EXPECT_EQ(box.extents.back(), 220);
}

TEST(LineIndex, FindsItsWayInLongFiles) {
  const TestFolder folder;
  std::string text;
  for (int i = 1; i <= 1000; ++i) text += "行 " + std::to_string(i) + (i % 2 == 0 ? "\r\n" : "\n");
  std::size_t visited = 0;
  const LineIndex index(folder.text("f.txt", text + "last Line"),
                        [&](std::string_view) { ++visited; });
  EXPECT_EQ(index.size(), 1001U);
  EXPECT_EQ(visited, 1001U);
  for (const std::size_t line : {0U, 63U, 64U, 65U, 999U, 500U}) {
    EXPECT_EQ(index.line(line), "行 " + std::to_string(line + 1));
  }
  EXPECT_EQ(index.line(1000), "last Line");
  EXPECT_EQ(index.find("行 70", 0), 69U);
  EXPECT_EQ(index.find("行 70", 70), 699U);
  EXPECT_EQ(index.find("LAST line", 3), 1000U);
  EXPECT_EQ(index.find("nowhere", 0), index.size());
  EXPECT_EQ(index.find_last("行 70", 1001), 708U);
  EXPECT_EQ(index.find_last("行 70", 708), 707U);
  EXPECT_EQ(index.find_last("行 70", 699), 69U);
  EXPECT_EQ(index.find_last("行 70", 69), index.size());
  EXPECT_EQ(index.find_last("LAST", 1001), 1000U);
  EXPECT_EQ(index.find_last("nowhere", 0), index.size());
  std::filesystem::resize_file(folder / "f.txt", 10);
  EXPECT_EQ(index.line(900), "");
  const LineIndex utf8(folder.file("u.txt", "\xEF\xBB\xBF名前\n"), [](std::string_view) {});
  EXPECT_EQ(utf8.line(0), "名前");
  const LineIndex empty(folder.file("e.txt", ""), [](std::string_view) {});
  EXPECT_EQ(empty.size(), 0U);
}

// Beyond one block, and where a double-byte character holds the bytes of letters.
TEST(LineIndex, SearchesBothWaysThroughManyBlocks) {
  const TestFolder folder;
  std::string text;
  constexpr std::size_t kLines = 60000;
  for (std::size_t i = 0; i < kLines; ++i) {
    text += i % 20000 == 7 ? "ここにABCがあります\r\n"
                           : "アイウエオの長い行が続いています、同じように\r\n";
  }
  const LineIndex index(folder.text("f.txt", text), [](std::string_view) {});
  std::vector<std::size_t> forwards, backwards;
  for (std::size_t at = index.find("abc", 0); at < kLines; at = index.find("abc", at + 1)) {
    forwards.push_back(at);
  }
  for (std::size_t at = kLines; (at = index.find_last("Abc", at)) < kLines;) {
    backwards.insert(backwards.begin(), at);
  }
  EXPECT_EQ(forwards, (std::vector<std::size_t>{7, 20007, 40007}));
  EXPECT_EQ(backwards, forwards);
  EXPECT_EQ(index.find("a", 8), 20007U);  // "ア" is 83 41, "A" 41
  EXPECT_EQ(index.find_last("同じ", kLines), kLines - 1);
  EXPECT_EQ(index.find_last("b", 8), 7U);
  EXPECT_EQ(index.find("イうエ", 0), kLines);
  // Two places in CP932 for one character, and bytes that lie across two characters
  const std::string lines = "x\r\n\x87\x9A\r\n\x81\xE6\r\n" + to_cp932("亜亜");
  const LineIndex twice(folder.file("t.txt", lines), [](std::string_view) {});
  EXPECT_EQ(twice.find("∵", 0), 1U);
  EXPECT_EQ(twice.find_last("∵", 4), 2U);
  EXPECT_EQ(twice.find(from_cp932("\x9F\x88"), 0), 4U);
  EXPECT_EQ(twice.find("亜亜", 0), 3U);
}

}  // namespace
}  // namespace tobarine
