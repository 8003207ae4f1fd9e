#include "rules/band.h"

#include <gtest/gtest.h>

#include "test_folder.h"

namespace tobarine {
namespace {

BandTable table_of(const std::string& text) {
  const TestFolder folder;
  BandTable table;
  table.load(folder.text("b.ini", text));
  return table;
}

const char* const kTable =
    "\"1\",\"23CM\",\"1200\",\"23cm\",\"3\"\r\n"
    "\"2\",\"33CM\",\"902\",\"33\",\"1\"\r\n"
    "\"3\",\"2M\",\"144.1\",\"a\",\"2\"\r\n"
    "\"4\",\"2m\",\"145\",\"b\",\"4\"\r\n";

TEST(Band, AdifBandToHamlogFrequency) {
  const BandTable table = table_of(kTable);
  const struct {
    const char* band;
    const char* freq;
    const char* remark;
  } rows[] = {{"20m ", "14", ""},
              {"70cm", "432", ""},
              {"33cm", "902", "Band=33"},
              {"35M", "902", ""},
              {"1MM", "24", ""},
              {"2m", "144.1", "Band=a"},
              {"23CM", "1200", "Band=23cm"},
              {"nothing", "", ""},
              {"2.5MM", "120", ""}};
  for (const auto& row : rows) {
    QsoRecord record;
    record.band = row.band;
    hamlog_freq_from_band(table, record);
    EXPECT_EQ(record.freq, row.freq) << row.band;
    EXPECT_EQ(record.band_remark, row.remark) << row.band;
  }
}

TEST(Band, FrequencyToBand) {
  const struct {
    const char* freq;
    const char* band;
  } rows[] = {{"7.1", "40M"}, {"8", "40M"},        {"8.5", ""},      {"10G", "3CM"},
              {"10g", "30M"}, {"1.9", "160M"},     {"5.3", ""},      {"146", "2M"},
              {"222", ""},    {"440.000", "70CM"}, {"2450", "13CM"}, {"10250", "3CM"},
              {"", ""},       {"x7", ""}};
  for (const auto& row : rows) EXPECT_EQ(band_from_freq(row.freq), row.band) << row.freq;
}

TEST(Band, RemarksNameTheBandForAdif) {
  const BandTable table = table_of(kTable);
  const auto name = [&table](const char* freq, const char* rmks1, const char* rmks2) {
    const HamlogBand band = band_for_adif(table, freq, rmks1, rmks2);
    return std::string(band.name) + (band.from_remark ? "!" : "");
  };
  EXPECT_EQ(name("1200", "", "x BAND=23CM"), "23CM!");
  EXPECT_EQ(name("1200", "", "Band=23CM"), "23CM");  // the other direction's spelling
  EXPECT_EQ(name("1200", "BAND=23CM", ""), "23CM");  // placed at 3: remarks 2 only
  EXPECT_EQ(name("902", "BAND=33", ""), "33CM!");
  EXPECT_EQ(name("902", "", "BAND=33"), "");
  EXPECT_EQ(name("144.1", "BAND=A", ""), "2M");  // placed at 2: remarks 2 only
  EXPECT_EQ(name("144.1", "", "BAND=A"), "2M!");
  EXPECT_EQ(name("7", "", "BAND=23CM"), "40M");
  EXPECT_EQ(name("", "", "BAND="), "!");  // an unused row is compared as empty
  EXPECT_EQ(name("10G", "", ""), "30M");  // no special case in this direction
}

TEST(Band, ZlogBandNumbers) {
  const struct {
    const char* number;
    const char* band;
    const char* freq;
    const char* name_160m;
  } rows[] = {{"1.9", "1.9", "1.9", "160M"}, {"430", "70CM", "430", ""},
              {"1200", "23CM", "1200", ""},  {"2400", "13CM", "2400", ""},
              {"10100", "10100", "old", ""}, {"3300", "", "", ""}};
  for (const auto& row : rows) {
    std::string band = row.number;
    std::string freq = "old";
    std::string name_160m;
    band_from_zlog(band, freq, name_160m);
    EXPECT_EQ(band, row.band) << row.number;
    EXPECT_EQ(freq, row.freq) << row.number;
    EXPECT_EQ(name_160m, row.name_160m) << row.number;
  }
}

}  // namespace
}  // namespace tobarine
