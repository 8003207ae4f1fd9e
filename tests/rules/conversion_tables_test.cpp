#include "rules/conversion_tables.h"

#include <gtest/gtest.h>
#include <set>

#include "paths.h"
#include "rules/adif_modes.h"
#include "rules/band.h"
#include "test_folder.h"
#include "text/error.h"
#include "text/strings.h"

namespace tobarine {
namespace {

ModeTable modes_of(const std::string& text) {
  const TestFolder folder;
  ModeTable table;
  table.load(folder.text("m.ini", text));
  return table;
}

TEST(ModeTable, ChainsThroughLaterRows) {
  const ModeTable table = modes_of("1,USB,SSB\r\n2,SSB,SB\r\n3,PSK31,PSK\r\n4,PSK63,PSK\r\n");
  std::string mode = " usb";
  EXPECT_TRUE(table.adif_to_csv(mode));
  EXPECT_EQ(mode, "SB");
  mode = "PSK";
  EXPECT_TRUE(table.csv_to_adif(mode));
  EXPECT_EQ(mode, "PSK31");  // row 3 replaced it, so row 4 no longer matches
  mode = "Cw ";
  EXPECT_FALSE(table.csv_to_adif(mode));
  EXPECT_EQ(mode, "Cw ");
  mode = "  ";
  EXPECT_TRUE(table.csv_to_adif(mode));  // unused rows are compared as empty texts
  EXPECT_EQ(mode, "");
}

TEST(BandTable, ReadsFieldsOfAnyForm) {
  const TestFolder folder;
  BandTable table;
  table.load(folder.text("b.ini",
                         "\"1\",\"2M\",\"144\",\"a,b\",\"1\"\r\n 2 , 6M,50 ,メモ,\n"
                         ",\"10M\",\"28\",\"\",\"\"\r\n\"4\",\"X\",\"1\",\"\",\"\"\r\n"));
  ASSERT_EQ(table.size(), 2U);  // a row without number ends the table
  EXPECT_EQ(table[0].memo, "a,b");
  EXPECT_EQ(table[1].adif, "6M");
  EXPECT_EQ(table[1].memo, "メモ");
  table.load(folder.text("b.ini", ""));
  EXPECT_EQ(table.size(), 0U);
  EXPECT_EQ(table[0].adif, "");
}

// What reading the rows as a mode table says; empty when it takes them.
std::string refusal(const std::string& text) {
  try {
    modes_of(text);
  } catch (const RecordError& error) {
    return error.what();
  }
  return {};
}

TEST(Tables, ADamagedTableStopsNamingTheRow) {
  std::string full;
  for (int i = 1; i <= 32; ++i) full += "1,a,b\r\n";
  const struct {
    std::string text, row, reason;
  } kDamaged[] = {
      {full + "1,a,b", "33 行目", "32 行まで"},
      {"1,a,b\r\n2,a", "2 行目", "欄の数"},
      {"1,a\r\n2,b,c\r\n", "1 行目",
       "欄の数"},  // else the second row would be 'c' and what follows
      {"1,a,b,c\r\n", "1 行目", "欄の数"},
      {"\"1\",\"a\",\"b\r\n\"2\",\"c\",\"d\"\r\n", "1 行目", "閉じていない"},
      {"1,a,b\r\n\"2\",\"c\",\"d", "2 行目", "閉じていない"},
      {"\"1\",\"a,\"b\"\r\n", "1 行目", "余分な文字"},
      {"\"1\",\"a\rx\",\"b\"\r\n", "1 行目", "改行"},
      {"1,a,b\r2,c,d\r", "1 行目", "改行"},
      {"1,a,b\rx\r\n", "1 行目", "改行"},
  };
  for (const auto& damaged : kDamaged) {
    const std::string said = refusal(damaged.text);
    EXPECT_TRUE(contains(said, "m.ini: " + damaged.row) && contains(said, damaged.reason))
        << damaged.text << said;
  }
  // Well-formed: no line end behind the last row, a row on two lines, one without a number.
  for (const std::string& sound : {full, std::string("1,a,b"), std::string("1,a\r\nb\r\n2,c,d\r\n"),
                                   std::string("1,a,b\r\n\r\nwhatever\"")}) {
    EXPECT_EQ(refusal(sound), "") << sound;
  }
}

TEST(Tables, SavingKeepsOnlySoMany) {
  const TestFolder folder;
  const std::vector<TableRow> rows(12, TableRow{"2M", "144", "メモ\"", "1"});
  save_table(folder / "b.ini", rows, BandTable::kSaved);
  BandTable table;
  table.load(folder / "b.ini");
  EXPECT_EQ(table.size(), 10U);
  EXPECT_EQ(table[9].memo, "メモ");
  save_table(folder / "m.ini", std::vector<TableRow>{{"RTTY", "RTY"}, {" ", "X"}, {"A", "B"}}, 20);
  EXPECT_EQ(TestFolder::bytes_of(folder / "m.ini"), "\"1\",\"RTTY\",\"RTY\"\r\n");
}

TEST(DeliveredTables, AreRightInBothDirections) {
  const std::filesystem::path data = delivered_folder();
  BandTable bands;
  bands.load(data / "Band_tbl.ini");
  constexpr std::size_t kFree = 3;  // for rows of the user's own
  ASSERT_LE(bands.size() + kFree, BandTable::kSaved);
  for (std::size_t i = 0; i < bands.size(); ++i) {
    EXPECT_EQ(bands[i].memo + bands[i].placement, "");
    EXPECT_LE(bands[i].freq.size(), 7U);
    EXPECT_EQ(band_for_adif(bands, bands[i].freq, "", "BAND=").name, bands[i].adif);
  }
  ModeTable modes;
  modes.load(data / "Mode_tbl.ini");
  ASSERT_LE(modes.size() + kFree, ModeTable::kSaved);
  std::set<std::string> names;
  for (std::size_t i = 0; i < modes.size(); ++i) {
    EXPECT_TRUE(is_adif_mode(modes[i].adif)) << modes[i].adif;
    EXPECT_FALSE(is_adif_mode(modes[i].csv)) << modes[i].csv;
    EXPECT_LE(modes[i].csv.size(), 3U);
    std::string mode = modes[i].csv;
    modes.csv_to_adif(mode);
    EXPECT_EQ(mode, modes[i].adif);
    modes.adif_to_csv(mode);
    // zLog's RTTY, cut to three letters, comes out as RTTY too; the way back writes the first.
    EXPECT_EQ(mode, modes[i].csv == "RTT" ? "RTY" : modes[i].csv);
    names.insert(modes[i].csv);
  }
  EXPECT_EQ(names.size(), modes.size());
  EXPECT_TRUE(names.contains("RTT"));
}

}  // namespace
}  // namespace tobarine
