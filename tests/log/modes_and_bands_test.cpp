#include <gtest/gtest.h>

#include "log/frequency.h"
#include "log/mode.h"

namespace tobarine {
namespace {

std::string pair_of(const std::optional<AdifMode>& mode) {
  return mode ? std::string(mode->mode) + "/" + std::string(mode->submode) : "none";
}

TEST(StandardMode, ASubmodeIsNeverAMode) {
  for (const auto& [mode, submode, expected] : {std::tuple{"CW", "", "CW/"},
                                                {"ft4", "", "MFSK/FT4"},
                                                {" USB ", "", "SSB/USB"},
                                                {"MFSK", "FT4", "MFSK/FT4"},
                                                {"FT4", "FT4", "MFSK/FT4"},
                                                {"", "Q65", "MFSK/Q65"},
                                                {"DATA", "FT4", "MFSK/FT4"},
                                                {"C4FM", "", "DIGITALVOICE/C4FM"},
                                                {"VARA HF", "", "DYNAMIC/VARA HF"},
                                                {"SSB", "SSB", "SSB/SSB"},
                                                {"MFSK", "FT2", "MFSK/FT2"},
                                                {"DV", "", "none"},
                                                {"", "", "none"}}) {
    EXPECT_EQ(pair_of(standard_mode(mode, submode)), expected) << mode << '+' << submode;
  }
}

TEST(Frequency, TextsHertzAndBands) {
  for (const auto& [text, hertz, band] : {std::tuple{"7.0123", 7012300ULL, "40m"},
                                          {"7", 7000000ULL, "40m"},
                                          {" 435.000 ", 435000000ULL, "70cm"},
                                          {".1363", 136300ULL, "2190m"},
                                          {"7.2999999", 7299999ULL, "40m"},
                                          {"7.300001", 7300001ULL, ""},
                                          {"10100", 10100000000ULL, "3cm"},
                                          {"1296", 1296000000ULL, "23cm"}}) {
    const auto read = hertz_of_mhz(text);
    ASSERT_EQ(read, hertz) << text;
    EXPECT_EQ(band_of(*read), band) << text;
  }
  for (const char* text : {"", ".", "0", "7.0.1", "10.1G", "-7", "435/145", "99999999", "7 .1"}) {
    EXPECT_FALSE(hertz_of_mhz(text)) << text;
  }
  for (const char* text : {"7.0123", "435", "0.1363", "1296.000001"}) {
    EXPECT_EQ(mhz_of_hertz(*hertz_of_mhz(text)), text);
  }
  EXPECT_EQ(standard_band("70CM"), "70cm");
  EXPECT_EQ(standard_band("71cm"), "");
}

}  // namespace
}  // namespace tobarine
