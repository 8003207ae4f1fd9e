// The rules of the Hamlog-to-ADIF runs, one contact at a time.
#include "convert/h2l_fixture.h"
#include "hamlog/hamlog_csv.h"
#include "text/error.h"
#include "text/strings.h"

namespace tobarine {
namespace {

TEST_F(H2l, WritesARecordOfTwoLines) {
  options_.write_name = true;
  EXPECT_EQ(logger32({.grid = "PM95", .name = " Ken ", .rmks1 = "a", .rmks2 = "b"}),
            "<CALL:6>JA1ABC <QSO_DATE:8:d>20240501 <TIME_ON:4>1205 <MODE:3>SSB <BAND:3>40M "
            "<FREQ:5>7.025 <RST_SENT:2>59 <RST_RCVD:2>57 <JCC:4>1001 \r\n"
            "<QSL_SENT:1>Y <QSL_RCVD:1>Y <DXCC:3>339<COMMENT:4>a  b <NAME:3>Ken "
            "<GRIDSQUARE:4>PM95 <EOR>\r\n\r\n");
}

TEST_F(H2l, WritesAnEqslRecordOfOneLine) {
  options_.slash_call_in_comment = true;
  EXPECT_EQ(eqsl({.call = "JA1ABC/6", .rmks1 = "a,b", .rmks2 = "$DX"}),
            "<CALL:8>JA1ABC/6 <QSO_DATE:8:d>20240501 <TIME_ON:4>1205 <MODE:3>SSB <BAND:3>40M "
            "<FREQ:5>7.025 <RST_SENT:2>59 <JCC:4>1001 <COMMENT:15>UR JA1ABC/6 a,b  <EOR>\r\n");
  EXPECT_TRUE(contains(eqsl({.code = "501A"}), "<RST_SENT:2>59  <EOR>\r\n"));
}

TEST_F(H2l, TimesGoToUtc) {
  EXPECT_EQ(tag({.time = "03:05J"}, "TIME_ON"), "1805");
  EXPECT_EQ(tag({.date = "24/03/01", .time = "05:00J"}, "QSO_DATE"), "20240229");
  EXPECT_EQ(tag({.time = "21:05U"}, "TIME_ON"), "2105");
  EXPECT_EQ(tag({.date = "30/12/31", .time = "12:00U"}, "QSO_DATE"), "20301231");
  EXPECT_EQ(tag({.date = "31/01/01", .time = "12:00U"}, "QSO_DATE"), "19310101");
  EXPECT_EQ(told(FindingKind::kBadDateOrTime) + told(FindingKind::kNoZoneLetter), 0U);
}

TEST_F(H2l, WhatIsNoDateOrTimeGoesOutAsItStandsAndIsTold) {
  EXPECT_EQ(tag({.time = "9:30J"}, "TIME_ON"), "930J");
  EXPECT_EQ(told(FindingKind::kBadDateOrTime), 1U);
  EXPECT_EQ(tag({.date = "24/1/15"}, "QSO_DATE"), "20241/15");
  EXPECT_EQ(tag({.time = "09:30"}, "TIME_ON"), "0930");
  EXPECT_EQ(told(FindingKind::kNoZoneLetter), 1U);
}

TEST_F(H2l, BandsComeFromTheIntegerPartOrTheRemarks) {
  EXPECT_EQ(tag({.freq = "430."}, "FREQ"), "430");
  EXPECT_EQ(tag({.freq = "28.5"}, "BAND"), "10M");
  EXPECT_EQ(tag({.freq = "8.5"}, "BAND"), "40M");  // the integer part decides
  EXPECT_EQ(tag({.freq = "1200", .rmks2 = "BAND="}, "BAND"), "23CM");
  EXPECT_EQ(tag({.freq = "1200", .rmks2 = "BAND="}, "FREQ"), "-");
  EXPECT_EQ(tag({.freq = "10G", .rmks2 = "BAND="}, "BAND"), "3CM");
  EXPECT_EQ(tag({.freq = "10G"}, "BAND"), "30M");
  EXPECT_EQ(told(FindingKind::kGigahertzText), 1U);
  EXPECT_EQ(tag({.freq = "5.3"}, "BAND"), "");
  EXPECT_EQ(told(FindingKind::kNoBand), 1U);
}

TEST_F(H2l, ModesGoThroughTheTable) {
  EXPECT_EQ(tag({.mode = "rty"}, "MODE"), "RTTY");
  EXPECT_EQ(tag({.mode = "FT8"}, "MODE"), "FT8");
  EXPECT_EQ(told(FindingKind::kUnknownMode), 0U);
  EXPECT_TRUE(contains(logger32({.mode = " xy"}), "<MODE:3> xy "));
  EXPECT_EQ(told(FindingKind::kUnknownMode), 1U);
}

TEST_F(H2l, CodesBecomeJccJcgAndDxcc) {
  EXPECT_TRUE(contains(logger32({.code = "01001"}), "<JCG:5>01001 \r\n"));
  EXPECT_TRUE(contains(logger32({.code = " 101"}), "<JCC:4> 101 \r\n"));
  EXPECT_EQ(tag({.code = "101"}, "JCC") + tag({.code = "101"}, "JCG"), "--");
  EXPECT_EQ(tag({.code = "500A"}, "JCC") + tag({.code = "500A"}, "DXCC"), "-339");
  EXPECT_EQ(tag({.code = "    "}, "JCC") + tag({.code = "    "}, "DXCC"), "--");
  EXPECT_EQ(tag({.code = "501A"}, "DXCC"), "-");
  EXPECT_EQ(told(FindingKind::kUnknownCode), 1U);
}

TEST_F(H2l, RemarksBecomeTheCommentByTheOptions) {
  EXPECT_EQ(tag({.rmks1 = "日本", .rmks2 = "ｶﾅ b"}, "COMMENT"), "ｶﾅ b");
  EXPECT_TRUE(contains(logger32({.rmks1 = "$DX rare"}), "<COMMENT:4>rare "));
  options_.dx_marker_in_comment = true;
  EXPECT_EQ(tag({.rmks1 = "$DX rare one"}, "COMMENT"), "rare one$DX");
  EXPECT_EQ(tag({.rmks1 = "$DX"}, "COMMENT"), "$DX");
  options_.keep_full_width_rmks1 = true;
  options_.use_rmks2 = false;
  EXPECT_TRUE(contains(logger32({.rmks1 = "日本", .rmks2 = "b $DX"}), "<COMMENT:7>日本$DX"));
}

TEST_F(H2l, IotaIsTheLastHitByContinents) {
  EXPECT_EQ(tag({.rmks1 = "IOTA AS-007 QSL"}, "IOTA"), "AS-007");
  EXPECT_EQ(tag({.rmks1 = "OC-001", .rmks2 = "EU-005"}, "IOTA"), "OC-001");
  EXPECT_EQ(tag({.rmks1 = "AS-1", .rmks2 = "AS-2 x"}, "IOTA"), "AS-2 x");
  EXPECT_EQ(tag({.rmks1 = "as-007"}, "IOTA"), "-");
  options_.use_rmks1 = false;
  EXPECT_EQ(tag({.rmks1 = "AS-007"}, "IOTA"), "-");
}

TEST_F(H2l, QslManagerStandsBehindTheAtSign) {
  EXPECT_EQ(tag({.qsl = "M", .rmks1 = "@ k1abc tnx"}, "QSL_VIA"), "K1ABC");
  EXPECT_TRUE(contains(logger32({.qsl = "M", .rmks1 = "@W3HNK"}),
                       "<QSL_VIA:5>W3HNK <QSL_SENT:1>N <QSL_RCVD:1>N"));
  EXPECT_EQ(tag({.qsl = "M* ", .rmks1 = "@ABCDEFGHIJKLM"}, "QSL_VIA"), "ABCDEFGHIJ");
  EXPECT_EQ(tag({.qsl = "J", .rmks1 = "@W3HNK"}, "QSL_VIA"), "-");
  EXPECT_EQ(tag({.qsl = "M", .rmks1 = "W3HNK"}, "QSL_VIA"), "-");
  EXPECT_EQ(told(FindingKind::kNoQslManager), 1U);
}

TEST_F(H2l, StatesByKeywordAndByWord) {
  options_.write_state = true;
  const auto state = [this](const char* call, const char* rmks1, const char* rmks2) {
    return tag({.call = call, .code = "", .rmks1 = rmks1, .rmks2 = rmks2}, "STATE");
  };
  EXPECT_EQ(state("W1AW", "x ct", "ny"), "CT");
  EXPECT_EQ(state("W1AW", "WAS=CT", "　　ＮＹ　"), "-");  // full-width letters are no code
  EXPECT_EQ(state("W1AW", "HI AK", "　　ny　x"), "NY");
  EXPECT_EQ(state("KH6AA", "CA", "HI"), "HI");
  EXPECT_EQ(state("KL7AA", "HI", "AK"), "AK");
  EXPECT_EQ(state("KL7AA/4", "AK", "FL"), "FL");
  EXPECT_EQ(state("JA1AA", "CA", ""), "-");
  EXPECT_EQ(state("4Q4QQ/W6", "$DX CA", ""), "CA");
  options_.state_search = StateSearch::kKeyword;
  EXPECT_EQ(state("W1AW", "CT", "was=xx was=ny"), "NY");
  EXPECT_EQ(state("W1AW", "WAS= CT", ""), "-");
  options_.state_search = StateSearch::kKeywordThenWord;
  EXPECT_EQ(state("W1AW", "CT", "WAS=NY"), "CT");  // remarks 1 gave one
  EXPECT_EQ(state("W1AW", "CT WAS=NY", ""), "NY");
  options_.state_remarks = StateRemarks::kRmks2;
  EXPECT_EQ(state("W1AW", "CT", "x"), "-");
  options_.state_search = StateSearch::kKeyword;
  options_.state_keyword = " ";
  EXPECT_EQ(state("W1AW", "", "CT"), "-");  // an empty keyword occurs nowhere
}

TEST_F(H2l, QthFromTheColumnOrTheEntity) {
  options_.write_qth = true;
  EXPECT_TRUE(contains(logger32({.qth = " 横浜 "}), " <QTH:4>横浜 \r\n"));
  EXPECT_EQ(tag({.call = "W1AW", .qth = " "}, "QTH"), "United States");
  EXPECT_EQ(tag({.call = "QQ1AA"}, "QTH"), "-");
}

TEST_F(H2l, NamesAreWrittenWhenHalfWidth) {
  options_.write_name = true;
  EXPECT_EQ(tag({.name = "太郎"}, "NAME"), "-");
  EXPECT_EQ(tag({.name = "ﾀﾛｳ"}, "NAME"), "ﾀﾛｳ");
  EXPECT_TRUE(contains(logger32({.name = "  "}), " <NAME:0> <EOR>"));
}

TEST_F(H2l, FiltersLeaveOutAndTell) {
  const std::string log = HamlogContact{.time = "12:00U", .code = "1001"}.line() +
                          HamlogContact{.time = "12:00J", .code = "501A"}.line() +
                          HamlogContact{.time = "12:00J", .code = "500A"}.line();
  options_.leave_out_jst = true;
  run(AdifTarget::kLogger32, log);
  EXPECT_EQ(report_.written, 1U);
  EXPECT_EQ(told(FindingKind::kLeftOutByJst), 2U);
  options_.leave_out_japanese_codes = true;  // then the zone letter does not matter
  run(AdifTarget::kLogger32, log);
  EXPECT_EQ(report_.written, 1U);
  EXPECT_EQ(told(FindingKind::kLeftOutByCode), 2U);
  EXPECT_EQ(told(FindingKind::kLeftOutByJst), 0U);
}

TEST_F(H2l, ACommaInQuotesShiftsColumnsForLogger32Only) {
  const HamlogContact contact{.qth = "a,b", .rmks1 = "one", .rmks2 = "two"};
  EXPECT_EQ(tag(contact, "COMMENT"), "b  one");
  EXPECT_EQ(told(FindingKind::kSplitByComma), 1U);
  EXPECT_EQ(tag({.rmks1 = "a \"b", .rmks2 = "c\" d"}, "COMMENT"), "a b  c d");  // nothing shifts
  EXPECT_EQ(told(FindingKind::kSplitByComma), 0U);
  EXPECT_EQ(told(FindingKind::kQuoteDropped), 1U);
  run(AdifTarget::kLogger32,
      HamlogContact{}.line().insert(HamlogContact{}.line().size() - 3, ",x"));
  EXPECT_EQ(told(FindingKind::kSplitByComma), 0U);  // the last column is not used
  EXPECT_TRUE(contains(eqsl(contact), "<COMMENT:8>one  two"));
}

TEST_F(H2l, AShortLineStopsTheRunAndKeepsWhatIsWritten) {
  for (const AdifTarget target : {AdifTarget::kLogger32, AdifTarget::kEqsl}) {
    const std::string text =
        run(target, HamlogContact{}.line() + "a,b,c\r\n" + HamlogContact{}.line());
    EXPECT_EQ(report_.written, 1U);
    ASSERT_TRUE(report_.stopped_by);
    EXPECT_TRUE(contains(*report_.stopped_by, "2 行目"));
    EXPECT_TRUE(contains(*report_.stopped_by, "3 個"));
    EXPECT_TRUE(contains(*report_.stopped_by, "a,b,c"));
    EXPECT_TRUE(text.ends_with("<EOR>\r\n") || text.ends_with("<EOR>\r\n\r\n"));
  }
}

TEST_F(H2l, InputsThatAreRefusedLeaveTheOutputAlone) {
  const auto output = folder_.text("out.adi", "old");
  EXPECT_THROW(run(AdifTarget::kLogger32, "JA1ABC,240501,x\r\n"), FileError);
  EXPECT_THROW(run(AdifTarget::kEqsl, "no comma\r\n"), RecordError);
  EXPECT_EQ(TestFolder::bytes_of(output), "old");
  const auto input = folder_.text("same.csv", HamlogContact{}.line());
  std::filesystem::create_hard_link(input, folder_ / "link.adi");
  EXPECT_THROW(run_h2l({input, folder_ / "link.adi", {}}, delivered<ConversionTables>(),
                       delivered<CallTables>(), {}),
               UsageError);
  EXPECT_EQ(TestFolder::bytes_of(input), HamlogContact{}.line());
  EXPECT_EQ(run(AdifTarget::kLogger32, ""), "");
  EXPECT_EQ(report_.read, 0U);
}

TEST_F(H2l, BrokenBytesPassThroughAndAreTold) {
  const auto input = folder_.file("in.csv", "JA1\x85\x40,24/05/01,21:05J,59,59,7,CW,,,,,,\xFD,,\n");
  report_ = run_h2l({input, folder_ / "out.adi", {}}, delivered<ConversionTables>(),
                    delivered<CallTables>(), {});
  const std::string bytes = TestFolder::bytes_of(folder_ / "out.adi");
  EXPECT_TRUE(contains(bytes, "<CALL:5>JA1\x85\x40 "));
  EXPECT_TRUE(contains(bytes, "<COMMENT:1>\xFD "));
  EXPECT_EQ(told(FindingKind::kInvalidByte), 1U);
}

TEST(OutputPath, EndsAtTheFirstDot) {
  EXPECT_EQ(output_path("/log/hamlog.csv", "adi"), std::filesystem::absolute("/log/hamlog.adi"));
  EXPECT_EQ(output_path("/my.logs/hamlog.csv", "adi"), std::filesystem::absolute("/my.adi"));
  EXPECT_EQ(output_path("/log/hamlog", "adi"), std::filesystem::absolute("/log/hamlog.adi"));
  EXPECT_EQ(output_path("/log/./x/../a.b.csv", "adi"), std::filesystem::absolute("/log/a.adi"));
}

TEST(FindingLog, CountsBeyondWhatItKeeps) {
  ConversionReport report;
  for (std::size_t i = 0; i < 1500; ++i) {
    report.findings.add(FindingKind::kNoBand, i + 1, "X", "5.3");
  }
  EXPECT_EQ(report.findings.count(FindingKind::kNoBand), 1500U);
  EXPECT_EQ(report.findings.kept().size(), 1000U);
  EXPECT_TRUE(contains(report_text(report, Front::kWindow), "500 件は省略"));
}

// The window speaks of its menus, the command line of its commands.
TEST(FindingAdvice, SpeaksTheWordsOfItsFront) {
  for (int k = 0; k < static_cast<int>(FindingKind::kCount); ++k) {
    const auto kind = static_cast<FindingKind>(k);
    for (const std::string_view words :
         {finding_heading(kind), finding_advice(kind, Front::kWindow)}) {
      EXPECT_FALSE(contains(words, "tobarine-cli") || contains(words, "--set")) << words;
    }
    EXPECT_FALSE(contains(finding_advice(kind, Front::kCommandLine), "[ Tool ]"));
  }
}

}  // namespace
}  // namespace tobarine
