// From ADIF to zLog's two logs and the CSV: one contact or a few, and what the readers make of what
// was written.
#include <gtest/gtest.h>

#include "app/settings.h"
#include "convert/adif_to_zlog.h"
#include "tables.h"
#include "test_folder.h"
#include "text/strings.h"
#include "zlog/all_reader.h"
#include "zlog/contest.h"
#include "zlog/zlo_reader.h"

namespace tobarine {
namespace {

// The tags of a contact without band and frequency; a test's own come last and win.
std::string bandless(const std::string& tags, const std::string& time = "1201") {
  return "<CALL:6>JA1ABC<QSO_DATE:8>20240706<TIME_ON:4>" + time +
         "<MODE:2>CW<RST_SENT:3>599<RST_RCVD:3>589<APP_N1MM_POINTS:1>1" + tags + "<EOR>\r\n";
}
std::string contact(const std::string& tags, const std::string& time = "1201") {
  return bandless("<BAND:3>40M<FREQ:7>7.02550" + tags, time);
}

class ZlogOut : public ::testing::Test {
 protected:
  void set(const std::string& key, const std::string& value) { set_setting(settings_, key, value); }
  const ConversionReport& run(const std::string& contacts) {
    const AdifToZlogJob job{folder_.text("in.adi", "<EOH>\r\n" + contacts), folder_ / "out",
                            adif_to_zlog_options(settings_), AdifReading::kClassic};
    for (const auto& output : job.outputs()) std::filesystem::remove(output);
    report_ = run_adif_to_zlog(job, delivered<ConversionTables>(), delivered<CallTables>(),
                               delivered<PlaceTables>(), state_, {});
    all_ = text_lines(TestFolder::bytes_of(folder_ / "out.all"));
    csv_ = text_lines(TestFolder::bytes_of(folder_ / "out.csv"));
    zlo_ = TestFolder::bytes_of(folder_ / "out.zlo");
    return report_;
  }
  // The bytes of a text field of the n-th record, from 1, its length byte in front.
  std::string field(std::size_t record, zlo::Area area) const {
    return zlo_.substr(record * 256 + area.length_at, area.size + 1);
  }
  unsigned byte(std::size_t record, std::size_t at) const {
    return static_cast<unsigned char>(zlo_[record * 256 + at]);
  }
  std::size_t told(FindingKind kind) const { return report_.findings.count(kind); }

  TestFolder folder_;
  Settings settings_ = first_start_settings();
  AdifToZlogState state_;
  ConversionReport report_;
  std::vector<std::string> all_, csv_;
  std::string zlo_;
};

TEST_F(ZlogOut, WritesTheColumnsAndTheRecord) {
  run(contact("<STX:2>12<APP_N1MM_EXCHANGE1:3>10H<STATION_CALLSIGN:6>JA1ZZZ<CONTEST_ID:3>X Y"));
  ASSERT_EQ(all_.size(), 2U);
  EXPECT_EQ(all_[0], "zLog for Windows ");
  EXPECT_EQ(
      all_[1],
      "2024/07/06 12:01 JA1ABC       599 12      589 10H     -     -     7    CW   1  (7025)");
  ASSERT_EQ(zlo_.size(), 512U);
  EXPECT_EQ(field(0, zlo::kCall), "\x0CJA1ZZZ      ");
  EXPECT_EQ(field(0, zlo::kContestName), "\x06X Y" + std::string(57, ' '));
  EXPECT_EQ(field(1, zlo::kCall), "\x06JA1ABC      ");
  EXPECT_EQ(field(1, zlo::kSentNumber),
            "\x02"
            "12      ");
  EXPECT_EQ(field(1, zlo::kReceivedNumber),
            "\x03"
            "10H      ");
  EXPECT_EQ(field(1, zlo::kMultiplier1),
            "\x03"
            "10H" +
                std::string(27, ' '));
  EXPECT_EQ(field(1, zlo::kMemo), "\x0C(7025)" + std::string(61, ' '));
  EXPECT_EQ(byte(1, zlo::kRstSent) + 256 * byte(1, zlo::kRstSent + 1), 599U);
  EXPECT_EQ(byte(1, zlo::kBand), 2U);
  EXPECT_EQ(byte(1, zlo::kNewMultiplier1), 1U);
  EXPECT_EQ(byte(1, zlo::kPoints), 1U);
  ASSERT_EQ(csv_.size(), 1U);
  EXPECT_TRUE(
      csv_[0].starts_with("\"JA1ABC\",\"24/07/06\",\"12:01U\",\"599\",\"589\",\"7.02550\","));
}

TEST_F(ZlogOut, NumbersComeFromTheRecordTheSettingsOrTheCounter) {
  set("set_STX", "13M");
  set("del_power_flag", "1");
  run(contact("<STX:1>7<SRX:2>12<SECTION:2>ON") + contact("<SECTION:3>OHH") + contact(""));
  EXPECT_EQ(all_[1].substr(34, 20), "7       589 12      ");
  EXPECT_EQ(all_[2].substr(34, 20), "13M     589 OH      ");
  EXPECT_EQ(all_[3].substr(34, 20), "13M     589         ");
  set("TX_NR_001", "1");
  std::string many;
  for (int i = 0; i < 1000; ++i) many += contact("<STX:1>7");
  run(contact("<BAND:3>60M<FREQ:3>5.3") + many);
  EXPECT_EQ(field(1, zlo::kSentNumber).substr(0, 4),
            "\x03"
            "001");
  EXPECT_EQ(field(258, zlo::kSentNumber).substr(0, 4),
            "\x03"
            "258");
  EXPECT_EQ(byte(258, zlo::kSerial), 2U);
  EXPECT_EQ(byte(258, zlo::kSerial + 1), 1U);
  EXPECT_EQ(field(1000, zlo::kSentNumber).substr(0, 5),
            "\x04"
            "1000");
}

TEST_F(ZlogOut, TimesAreInTheZonesThatTheSettingsName) {
  run(contact("", "1500"));
  EXPECT_TRUE(all_[1].starts_with("2024/07/06 15:00 "));
  set("zlog_all_jst", "1");
  run(contact("", "1500"));
  EXPECT_TRUE(all_[1].starts_with("2024/07/07 00:00 "));
  EXPECT_TRUE(contains(csv_[0], "\"24/07/06\",\"15:00U\""));
  EXPECT_TRUE(contains(report_text(report_, Front::kWindow), ".zlo は UTC (ADIF のまま)"));
  EXPECT_EQ(read_contest(folder_ / "out.zlo").zone, 'U');
  set("utc_jst_str", "ALL_J");
  run(contact("", "1500"));
  EXPECT_TRUE(contains(csv_[0], "\"24/07/07\",\"00:00J\""));
  EXPECT_TRUE(contains(report_text(report_, Front::kWindow), ".zlo は JST"));
  EXPECT_EQ(byte(0, zlo::kZone), 0xE4U);
  EXPECT_EQ(byte(0, zlo::kZone + 1), 0xFDU);
  EXPECT_EQ(read_contest(folder_ / "out.zlo").zone, 'J');
  run("");  // no contact: the header alone
  EXPECT_EQ(read_contest(folder_ / "out.zlo").zone, 'J');
}

TEST_F(ZlogOut, OptionalTextsGoToMemoAndRemarks) {
  const std::string tags =
      "<OPERATOR:6>JA1OPR<APP_N1MM_RADIO_NR:1>2<COMMENT:5>(hi)。<AGE:2>45"
      "<IOTA:6>AS-007";
  run(contact(tags));
  EXPECT_TRUE(all_[1].ends_with("1  (7025)"));
  for (const char* key :
       {"OP_name_tenki", "TX_NR_tenki", "COMMENT_tenki", "AGE_tenki", "IOTA_tenki"}) {
    set(key, "1");
  }
  set("COMMENT_rmks", "2");
  set("TX_NR_rmks", "2");
  set("freq_only_MHz_2", "1");
  run(contact(tags) + contact(tags + "<BAND:2>2M<FREQ:5>144.2") + contact(""));
  EXPECT_TRUE(all_[1].ends_with("(7025) %%JA1OPR%% (hi)。 AGE:45 AS-007"));
  EXPECT_TRUE(all_[2].ends_with("(0) %%JA1OPR%% (hi)。 AGE:45 AS-007"));
  EXPECT_TRUE(all_[3].ends_with("1  (7025)"));  // nothing is carried over from the contact before
  EXPECT_EQ(field(1, zlo::kOperator), "\x0CJA1OPR        ");
  EXPECT_EQ(byte(1, zlo::kTxNumber), 2U);
  const std::string memo = "(7025) (hi)。 AGE:45 AS-007";
  EXPECT_EQ(field(1, zlo::kMemo)[0], static_cast<char>(2 * 26));
  EXPECT_TRUE(contains(field(1, zlo::kMemo), to_cp932(memo)));
  EXPECT_TRUE(contains(csv_[0], "\"7\"")) << csv_[0];
  EXPECT_TRUE(contains(csv_[0], "\"AS-007 AGE:45\",\"TX#2 (hi)。\"")) << csv_[0];
}

TEST_F(ZlogOut, BandsAndModesThatZlogHasNotAreReported) {
  run(contact("<BAND:3>60M<FREQ:3>5.3") + bandless("<FREQ:6>14.025<MODE:3>USB") +
      contact("<MODE:3>FT8<BAND:3>3CM<FREQ:5>10368") + bandless("") +
      contact("<MODE:4>RTTY<BAND:3>20M"));
  EXPECT_EQ(report_.read, 5U);
  EXPECT_EQ(report_.written, 3U);
  EXPECT_EQ(csv_.size(), 5U);
  EXPECT_EQ(told(FindingKind::kNoZlogBand), 2U);
  EXPECT_EQ(told(FindingKind::kOtherMode), 1U);
  EXPECT_EQ(told(FindingKind::kFreqOffBand), 1U);  // 7.0255 on 20M: no frequency in the memo
  EXPECT_EQ(all_[1].substr(66), "14   SSB  1  (14025)");
  EXPECT_EQ(all_[2].substr(66), "10G  Other1  ");
  EXPECT_EQ(all_[3].substr(66), "14   RTY  1  ");
  EXPECT_EQ(byte(3, zlo::kMode), 4U);
}

TEST_F(ZlogOut, FrequenciesThatTheMemoCannotHoldAreReported) {
  run(contact("<BAND:2>2M<FREQ:5>144.2") + contact("") + contact("<FREQ:8>7.025000") +
      bandless("<BAND:4>160M<FREQ:5>1.909") + bandless("<BAND:4>160M"));
  EXPECT_EQ(told(FindingKind::kZlogFreqDropped), 1U);
  EXPECT_TRUE(contains(report_text(report_, Front::kWindow), "kHz より下の桁: 1 件の交信"));
}

TEST_F(ZlogOut, ContactsWithoutDateOrCallAreLeftOut) {
  run(contact("") + contact("<CALL:0>") + contact("<QSO_DATE:0>") +
      "<CALL:6>JA1XYZ<BAND:3>40M<EOR>");
  EXPECT_EQ(report_.written, 1U);
  EXPECT_EQ(told(FindingKind::kNoDateOrCall), 3U);
  EXPECT_FALSE(report_.stopped_by);
}

TEST_F(ZlogOut, WhatTheBinaryLogCannotHoldEndsTheRun) {
  for (const char* tags : {"<APP_N1MM_POINTS:2>10", "<APP_N1MM_POINTS:3>256", "<TIME_ON:4>2460",
                           "<QSO_DATE:8>20230229"}) {
    run(contact("") + contact(tags) + contact(""));
    if (std::string_view(tags) == "<APP_N1MM_POINTS:3>256") {
      EXPECT_FALSE(report_.stopped_by);  // 256 is 100 in hexadecimal form
      EXPECT_EQ(byte(2, zlo::kPoints), 100U);
      continue;
    }
    EXPECT_TRUE(report_.stopped_by && contains(*report_.stopped_by, "3 行目")) << tags;
    EXPECT_EQ(zlo_.size(), 512U);
    EXPECT_EQ(all_.size(), 2U);
    EXPECT_EQ(csv_.size(), 1U);
  }
}

TEST_F(ZlogOut, LongTextsAreCutWholeCharactersAndReported) {
  set("OP_name_tenki", "1");
  set("COMMENT_tenki", "1");
  std::string kanji;
  for (int i = 0; i < 40; ++i) kanji += "漢";
  run(contact("<CALL:13>VP2E/JA1ABC/P<STX:9>123456789<OPERATOR:24>日本語日本語日本語<COMMENT:80>" +
              kanji));
  EXPECT_EQ(told(FindingKind::kZlogFieldCut), 1U);
  EXPECT_EQ(field(1, zlo::kCall), "\x0CVP2E/JA1ABC/");
  EXPECT_EQ(field(1, zlo::kOperator), to_cp932("\x0E日本語日本語日"));
  EXPECT_EQ(field(1, zlo::kSentNumber),
            "\x08"
            "12345678");
  EXPECT_EQ(all_[1].substr(34, 12), "1234567 589 ");
  // 7 for the frequency and the blank, then 30 characters in 60 bytes.
  EXPECT_EQ(field(1, zlo::kMemo)[0], static_cast<char>(2 * 37));
  EXPECT_TRUE(all_[1].ends_with(kanji));
}

TEST_F(ZlogOut, ABufferLivesOnFromRunToRun) {
  set("OP_name_tenki", "1");
  run(contact("<OPERATOR:6>JA1OPR"));
  set("OP_name_tenki", "0");
  run(contact(""));
  EXPECT_EQ(field(1, zlo::kOperator), "\x0CJA1OPR        ");
  state_ = {};
  run(contact(""));
  EXPECT_EQ(field(1, zlo::kOperator), std::string(15, '\0'));
}

// Both logs read back give what was written.
TEST_F(ZlogOut, OurReadersReadItBack) {
  const char* bands[] = {"160M", "80M", "40M", "30M",  "20M",  "17M",  "15M", "12M",
                         "10M",  "6M",  "2M",  "70CM", "23CM", "13CM", "6CM", "3CM"};
  std::string log;
  for (const std::string band : bands) {
    log +=
        bandless("<BAND:4>" + band + "<MODE:4>RTTY", "0" + std::to_string(100 + log.size() % 60));
  }
  run(log);
  ASSERT_EQ(report_.written, std::size(bands));
  AllReader text(folder_ / "out.all");
  ZloReader binary(folder_ / "out.zlo");
  FindingLog findings;
  ZlogContact a, b;
  for (std::size_t i = 0; i < std::size(bands); ++i) {
    ASSERT_TRUE(text.next(a, findings) && binary.next(b, findings));
    EXPECT_EQ(a.date + a.time + a.call + a.his_rst + a.my_rst + a.band + a.mode,
              b.date + b.time + b.call + b.his_rst + b.my_rst + b.band + b.mode);
    EXPECT_EQ(a.band, zlo::kBands[i]);
    EXPECT_EQ(a.mode, "RTY");
    EXPECT_EQ(a.date, "2024/07/06");
  }
  EXPECT_FALSE(text.next(a, findings) || binary.next(b, findings));
  EXPECT_TRUE(findings.kept().empty());
}

}  // namespace
}  // namespace tobarine
