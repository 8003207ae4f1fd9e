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

TEST(Tables, TooLongOrCutTablesStopNamingTheRow) {
  const TestFolder folder;
  const auto message = [](auto& table, const std::filesystem::path& file) {
    try {
      table.load(file);
    } catch (const RecordError& error) {
      return std::string(error.what());
    }
    return std::string();
  };
  std::string bands;
  std::string modes;
  for (int i = 1; i <= 22; ++i) bands += "1,a,b,c,d\r\n";
  for (int i = 1; i <= 32; ++i) modes += "1,a,b\r\n";
  BandTable band_table;
  ModeTable mode_table;
  EXPECT_EQ(message(band_table, folder.text("b.ini", bands)), "");
  EXPECT_EQ(message(mode_table, folder.text("m.ini", modes)), "");
  EXPECT_TRUE(contains(message(band_table, folder.text("b.ini", bands + "1,a,b,c,d")), "23 行目"));
  EXPECT_TRUE(contains(message(mode_table, folder.text("m.ini", modes + "1,a,b")), "33 行目"));
  EXPECT_TRUE(contains(message(band_table, folder.text("c.ini", "1,a,b,c,d\r\n2,a")), "2 行目"));
}

TEST(Tables, SavingKeepsOnlySoMany) {
  const TestFolder folder;
  const std::vector<BandRow> rows(12, BandRow{"2M", "144", "メモ\"", "1"});
  save_band_table(folder / "b.ini", rows);
  BandTable table;
  table.load(folder / "b.ini");
  EXPECT_EQ(table.size(), 10U);
  EXPECT_EQ(table[9].memo, "メモ");
  save_mode_table(folder / "m.ini", std::vector<ModeRow>{{"RTTY", "RTY"}, {" ", "X"}, {"A", "B"}});
  EXPECT_EQ(TestFolder::bytes_of(folder / "m.ini"), "\"1\",\"RTTY\",\"RTY\"\r\n");
}

TEST(DeliveredTables, AreRightInBothDirections) {
  const std::filesystem::path data = delivered_folder();
  BandTable bands;
  bands.load(data / "Band_tbl.ini");
  ASSERT_LE(bands.size(), BandTable::kSaved);
  for (std::size_t i = 0; i < bands.size(); ++i) {
    EXPECT_EQ(bands[i].memo + bands[i].placement, "");
    EXPECT_LE(bands[i].freq.size(), 7U);
    EXPECT_EQ(band_for_adif(bands, bands[i].freq, "", "BAND=").name, bands[i].adif);
  }
  ModeTable modes;
  modes.load(data / "Mode_tbl.ini");
  ASSERT_LE(modes.size(), ModeTable::kSaved);
  std::set<std::string> names;
  for (std::size_t i = 0; i < modes.size(); ++i) {
    EXPECT_TRUE(is_adif_mode(modes[i].adif)) << modes[i].adif;
    EXPECT_FALSE(is_adif_mode(modes[i].csv)) << modes[i].csv;
    EXPECT_LE(modes[i].csv.size(), 3U);
    std::string mode = modes[i].adif;
    modes.adif_to_csv(mode);
    EXPECT_EQ(mode, modes[i].csv);
    modes.csv_to_adif(mode);
    EXPECT_EQ(mode, modes[i].adif);
    names.insert(modes[i].adif);
  }
  EXPECT_EQ(names.size(), modes.size());
}

}  // namespace
}  // namespace tobarine
