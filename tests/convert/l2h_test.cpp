// The rules of the ADIF-to-Hamlog run.
#include "convert/l2h_fixture.h"
#include "text/error.h"
#include "text/strings.h"

namespace tobarine {
namespace {

TEST_F(L2h, ColumnsOfAContact) {
  EXPECT_EQ(
      run("<CALL:6>JA1ABC <QSO_DATE:8>20150124 <time_on:6>200059 <BAND:3>40m <MODE:4>RTTY\r\n"
          "<RST_SENT:3>599<RST_RCVD:3>579<JCC:5>1001H<QSL_SENT:1>Y<NAME:4>太郎<EOR>\r\n"),
      "\"JA1ABC \",\"15/01/24\",\"20:00U\",\"599\",\"579\",\"7\",\"RTY\",\"1001\",\"\",\"J* \","
      "\"太郎\",\"東京都23区\",\"\",\"\",\"\"\r\n");
  EXPECT_EQ(report_.read, 1U);
  EXPECT_EQ(report_.written, 1U);
}

TEST_F(L2h, ABandThatTheFrequencyNoLongerTellsIsReported) {
  for (const char* lost : {"<BAND:4>33CM", "<BAND:3>1MM", "<BAND:3>4mm", "<BAND:5>2.5MM"}) {
    column(6, lost);
    EXPECT_EQ(told(FindingKind::kBandLost), 1U) << lost;
  }
  for (const char* kept :
       {"<BAND:3>6MM", "<BAND:3>40M", "<FREQ:7>77500.1<BAND:3>4MM", "<BAND:0>"}) {
    column(6, kept);
    EXPECT_EQ(told(FindingKind::kBandLost), 0U) << kept;
  }
}

TEST_F(L2h, RecordsAreGatheredByLines) {
  const std::string two = "<CALL:1>A<QSO_DATE:8>20240501<EOR>\r\n\r\n\r\n<CALL:1>B\r\n<EOR>";
  run(two);
  EXPECT_EQ(report_.written, 2U);
  run("<CALL:1>A<QSO_DATE:8>20240501\r\n\r\n\r\n\r\n\r\n<CALL:1>B<EOR>\r\n");
  EXPECT_EQ(report_.written, 2U);
  EXPECT_EQ(told(FindingKind::kRecordCut), 1U);
  std::string header;  // without <EOH> the first 20 lines are lost
  for (int i = 0; i < 19; ++i) header += "x\r\n";
  run_bytes(header + "<CALL:1>A<QSO_DATE:8>20240501<EOR>\r\n<CALL:1>B<EOR>\r\n");
  EXPECT_EQ(report_.read, 2U);
  EXPECT_EQ(report_.written, 0U);  // B has no date, and nothing to take it from
  EXPECT_EQ(told(FindingKind::kDroppedNoDate), 1U);
}

TEST_F(L2h, TagsAreFoundAnywhereInAField) {
  EXPECT_EQ(column(1, "<EQ_CALL:4>K1AA "), "K1AA ");
  EXPECT_EQ(column(7, "<MODE:2>CW<SUBMODE:3>USB"), "CW");
  EXPECT_EQ(column(7, "<MODE:3>USB"), "USB");  // three characters stay
  EXPECT_EQ(column(7, "<MODE:5>PSK31"), "P31");
  EXPECT_EQ(column(7, "<MODE:6>STRANG"), "STRANG");
  EXPECT_EQ(told(FindingKind::kUnknownMode), 1U);
  EXPECT_EQ(column(6, "<FREQ:9>14.025000"), "14.0250");
  EXPECT_EQ(told(FindingKind::kValueCut), 0U);  // nothing but zeros is lost
  EXPECT_EQ(column(6, "<FREQ:9>14.025125<BAND:3>20M"), "14.0251");
  EXPECT_EQ(told(FindingKind::kValueCut), 1U);
  EXPECT_EQ(column(11, "<NAME:3>a>b<MY_NAME:1>x"), "a>b");
  EXPECT_EQ(column(12, "<MY_QTH:1>x"), "United States");
  EXPECT_EQ(column(3, "<TIME_ON:5>09000"), "12:05U");
  EXPECT_EQ(told(FindingKind::kOddTagLength), 1U);
}

TEST_F(L2h, SomeFieldsCarryOverAndAreTold) {
  const std::string csv = run(
      "<CALL:5>HL1AA<QSO_DATE:8>20240501<TIME_ON:4>0100<RST_SENT:2>59<NAME:1>x<CQZ:2>25<EOR>\r\n"
      "<CALL:5>HL2AA<TIME_ON:4>0200<EOR>\r\n");
  EXPECT_TRUE(contains(csv, "\"HL2AA\",\"24/05/01\",\"02:00U\",\"59\""));
  EXPECT_FALSE(contains(csv.substr(csv.find("HL2AA")), "\"x\""));
  EXPECT_FALSE(contains(csv.substr(csv.find("HL2AA")), "CQZ"));
  EXPECT_TRUE(contains(report_text(report_, Front::kWindow), "HL2AA  QSO_DATE, RST_SENT"));
}

TEST_F(L2h, CodesAndPlaces) {
  const auto code = [this](const std::string& call, const std::string& tags) {
    const std::string all = "<CALL:1>" + call + tags;
    return column(8, all) + " " + column(12, all);
  };
  EXPECT_EQ(code("JA1AA/1", ""), "500A Japan");
  EXPECT_EQ(code("JA1AA", "<JCC:1>H"), "500A Japan");
  EXPECT_EQ(code("JA1AA", "<JCC:5>1001P<JCG:5>11007"), "1001 東京都23区");
  EXPECT_EQ(code("JA1AA", "<JCG:5>11007"), "11007 神奈川県三浦郡");
  EXPECT_EQ(code("JA1AA", "<APP_N1MM_EXCHANGE1:6>110101M"), "110101 神奈川県横浜市鶴見区");
  EXPECT_EQ(code("JA1AA", "<JCC:4>9999"), "9999 ");
  EXPECT_EQ(told(FindingKind::kUnknownJcc), 1U);
  EXPECT_EQ(code("HL1AA", "<DXCC:4> 006"), " Alaska");
  EXPECT_EQ(told(FindingKind::kNoHamlogCode), 1U);
  EXPECT_EQ(code("HL1AA", "<DXCC:3>339"), " Republic of Korea");
  EXPECT_EQ(code("HL1AA", "<DXCC:3>291<JCC:4>1001"), " Republic of Korea");
  EXPECT_EQ(code("HL1AA", "<DXCC:3>999"), " ");
  EXPECT_EQ(code("4Q4QQ/P5", ""), " Sri Lanka");
  EXPECT_EQ(code("AB1/JA2", ""), "500A Japan");  // a tie: the second piece
  EXPECT_EQ(code("QQ1QQ", ""), " ");
  EXPECT_EQ(told(FindingKind::kUnknownEntity), 1U);
  options_.write_qth = true;
  EXPECT_EQ(code("JA1AA", "<QTH:4>横浜"), "500A 横浜");
  EXPECT_EQ(code("JA1AA", "<QTH:1> "), "500A Japan");
}

TEST_F(L2h, TimesAndTheFifteenthColumn) {
  const std::string contacts =
      "<CALL:5>JA1AA<QSO_DATE:8>20150124<TIME_ON:4>2000<EOR>\r\n"
      "<CALL:5>HL1AA<QSO_DATE:8>20150124<TIME_ON:4>2000<EOR>\r\n"
      "<CALL:5>HL2AA<QSO_DATE:8>20151324<TIME_ON:4>2000<EOR>\r\n";
  const auto times = [this, &contacts](TimeMode mode) {
    options_.time_mode = mode;
    std::string text;
    for_each_piece(run(contacts), '\n', [&text](std::string_view line) {
      if (!line.empty()) text.append(line.substr(9, 17)).append(line.substr(line.rfind(','), 4));
    });
    replace_all(text, "\"", "");
    replace_all(text, "\r", "");
    return text;
  };
  EXPECT_EQ(times(TimeMode::kAllUtc), "15/01/24,20:00U,15/01/24,20:00U,15/13/24,20:00U,");
  EXPECT_EQ(times(TimeMode::kAllJstFromAdif),
            "15/01/25,05:00J,015/01/25,05:00J,815/13/24,20:00U,8");
  EXPECT_EQ(times(TimeMode::kNone), "15/01/24,20:00U,815/01/24,20:00U,815/13/24,20:00U,8");
  EXPECT_EQ(times(TimeMode::kJapaneseToJst), "15/01/25,05:00J,015/01/24,20:00U,815/13/24,20:00U,8");
  EXPECT_EQ(told(FindingKind::kImpossibleDay), 1U);
}

TEST_F(L2h, QslColumn) {
  EXPECT_EQ(column(10, "<QSL_VIA:5>W1ABC<QSL_SENT:1>Y"), "M* ");
  EXPECT_EQ(column(10, "<QSL_RCVD:1>Y"), "  *");
  EXPECT_EQ(column(10, "<QSL_SENT:1>y<QSL_RCVD:1>N"), "   ");
  EXPECT_EQ(column(10, "<QSL_SENT:1>Y<QSL_RCVD:1>Y"), "J**");
  EXPECT_EQ(column(10, "<QSL_SENT:1>Y<QSL_VIA:0>"), "M* ");
}

TEST_F(L2h, RemarksByTheOptions) {
  const std::string tags = "<QSL_VIA:3>K1A<CQZ:1>5<STATE:2>CA<CNTY:2>OR";
  const auto remarks = [this, &tags] { return column(13, tags) + "|" + column(14, tags); };
  EXPECT_EQ(remarks(), "@K1A  CQZ:5|CNTY:OR");
  options_.remarks.write_state = true;
  EXPECT_EQ(remarks(), "|");
  options_.remarks.state_place = 0;
  EXPECT_EQ(remarks(), "@K1A  CQZ:5  CA|CNTY:OR");
  EXPECT_EQ(column(13, "<QSL_VIA:5>W1ABC<STATE:2>CA"), "@W1ABC    CA");
  options_.remarks.state_place = 1;
  EXPECT_EQ(remarks(), "@K1A  CQZ:5|CA CNTY:OR");
  options_.remarks.state_prefixed = true;
  EXPECT_EQ(remarks(), "@K1A  CQZ:5|CNTY:OR WAS=CA");
  EXPECT_EQ(column(13, tags + "<DXCC:3>339"), "@K1A");  // Japanese contacts lose their zones
}

TEST_F(L2h, BandKeywordsGoWhereTheTableSays) {
  ConversionTables tables;
  tables.bands.load(
      folder_.text("b.ini", "1,20M,14,low,1\r\n2,40M,7,x,2\r\n3,6M,50,y,3\r\n4,2M,144,z,4\r\n"));
  AdifParser parser(tables.bands, tables.modes, {}, {});
  const auto remarks = [&parser](const char* band) {
    QsoRecord record;
    FindingLog findings;
    parser.parse(std::string("<CALL:1>A<IOTA:6>AS-007<CNTY:2>OR<BAND:3>") + band, 1, record,
                 findings);
    return record.freq + "|" + record.rmks1 + "|" + record.rmks2;
  };
  EXPECT_EQ(remarks("20m"), "14|Band=low AS-007|CNTY:OR");
  EXPECT_EQ(remarks("40M"), "7|AS-007 Band=x|CNTY:OR");
  EXPECT_EQ(remarks("6M"), "50|AS-007|Band=y CNTY:OR");
  EXPECT_EQ(remarks("2M"), "144|AS-007|CNTY:OR Band=z");
}

TEST_F(L2h, LinesWithSlashesAreDroppedAndTold) {
  EXPECT_EQ(column(1, "<NAME:3>a//"), "-");
  EXPECT_EQ(told(FindingKind::kDroppedSlashes), 1U);
  EXPECT_EQ(column(1, "<NAME:4>/\"/x"), "-");  // without its quote
  EXPECT_EQ(column(1, "<QSO_DATE:0>"), "-");
  EXPECT_EQ(told(FindingKind::kDroppedNoDate), 1U);
  EXPECT_EQ(column(11, "<NAME:5>a\"b\"c"), "abc");
  EXPECT_EQ(told(FindingKind::kQuoteDropped), 1U);
}

TEST_F(L2h, ReadsUtf8WhereTheFileCanBeNothingElse) {
  const std::string contact =
      "<EOH>\n<CALL:6>JA1ABC<QSO_DATE:8>20240501<TIME_ON:4>0100<NAME:6>é髙橋<EOR>\n";
  EXPECT_TRUE(contains(run_bytes(contact), "\"?髙橋\""));
  EXPECT_EQ(told(FindingKind::kReadAsUtf8), 1U);
  EXPECT_EQ(told(FindingKind::kNotEncodable), 1U);
  EXPECT_TRUE(contains(run_bytes("\xEF\xBB\xBF" + contact), "\"?髙橋\""));
  run_bytes(to_cp932("<EOH>\n<CALL:1>A<NAME:1>太郎<EOR>\n"));
  EXPECT_EQ(told(FindingKind::kReadAsUtf8) + told(FindingKind::kMaybeUtf8), 0U);
  run_bytes("<EOH>\n<CALL:1>A<NAME:1>B\xC3\xB6<EOR>\n");  // half-width kana, or an umlaut
  EXPECT_EQ(told(FindingKind::kMaybeUtf8), 1U);
}

TEST_F(L2h, AFailedRunLeavesTheOutputAlone) {
  const auto output = folder_.text("out.csv", "old");
  temporary_ = folder_ / "none";
  EXPECT_THROW(run("<CALL:1>A<EOR>"), FileError);
  temporary_ = folder_.path();
  EXPECT_THROW(run(std::string(2'000'000, 'x')), RecordError);
  EXPECT_EQ(TestFolder::bytes_of(output), "old");
  std::size_t files = 0;
  for ([[maybe_unused]] const auto& file : std::filesystem::directory_iterator(folder_.path())) {
    ++files;
  }
  EXPECT_EQ(files, 2U);  // input and output: the temporary file is gone
}

}  // namespace
}  // namespace tobarine
