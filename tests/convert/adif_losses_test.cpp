// What the tolerant reading of ADIF loses is counted beforehand and told.
#include <random>

#include "convert/l2h_fixture.h"
#include "hamlog/adif_reader.h"
#include "text/error.h"

namespace tobarine {
namespace {

const std::string kHeader = "log\r\n<EOH>\r\n";

std::string contact(const std::string& call, const std::string& between = " ") {
  return "<CALL:" + std::to_string(call.size()) + ">" + call + between + "<QSO_DATE:8>20240501" +
         between + "<TIME_ON:4>0102" + between + "<MODE:2>CW" + between + "<BAND:3>40M" + between;
}

std::string repeated(std::size_t count, const std::string& text) {
  std::string result;
  for (std::size_t i = 0; i < count; ++i) result += text;
  return result;
}

TEST_F(L2h, EveryLayoutIsSeenThrough) {
  const std::string one = contact("JA1ABC") + "<EOR>\r\n";
  const struct {
    const char* name;
    std::string text;
    std::size_t contacts, in_header, shared, hurt, no_call;
  } cases[] = {
      {"nothing", "", 0, 0, 0, 0, 0},
      {"a record a line", kHeader + one + "\r\n" + one, 2, 0, 0, 0, 0},
      {"five lines", kHeader + repeated(3, contact("A1A", "\n") + "<EOR>"), 3, 0, 0, 3, 1},
      {"five lines each", kHeader + repeated(3, contact("A1A", "\n") + "<EOR>\n"), 3, 0, 0, 3, 3},
      {"four and a mark", kHeader + "<CALL:1>A\n<BAND:2>6M\n\n<EOR>\n", 1, 0, 0, 0, 0},
      {"six lines", kHeader + "<CALL:1>A\n\n\n\n\n<MODE:2>CW<eor>\n" + one, 2, 0, 0, 1, 1},
      {"no header", repeated(17, one), 17, 17, 0, 17, 0},
      {"no header, more lines", repeated(30, one), 30, 20, 0, 20, 0},
      {"a long header", repeated(24, "text <X:1>y\n") + kHeader + one, 1, 0, 0, 0, 1},
      {"behind the header's end", "<EOH>" + one + one, 2, 1, 0, 1, 0},
      {"a call before the header's end", "for <CALL:1>A\n" + kHeader + one, 1, 0, 0, 0, 0},
      {"all on one line", kHeader + repeated(3, contact("A1A") + "<EOR>"), 3, 0, 2, 3, 0},
      {"no end marks", kHeader + repeated(3, contact("A1A") + "\n"), 3, 0, 2, 3, 0},
      {"begun on the line before", kHeader + "<CALL:1>A<EOR><BAND:2>6M\n<CALL:1>B<EOR>\n", 2, 0, 0,
       2, 0},
      {"CR alone", kHeader + repeated(3, contact("A1A", "\r") + "<EOR>\r"), 3, 0, 2, 3, 0},
      {"marks inside a value", kHeader + "<NOTES:15>x<CALL:1>y<EOR> <CALL:1>A<EOR>\n", 1, 0, 0, 0,
       0},
      {"a length that lies", kHeader + "<NOTES:9>x <CALL:1>A <EOR>\n" + one, 2, 0, 0, 0, 0},
      {"an end of file", kHeader + one + "<APP_LoTW_EOF>\n", 1, 0, 0, 0, 1},
      {"two files in one", kHeader + one + kHeader + one, 2, 0, 0, 0, 0},
  };
  for (const auto& c : cases) {
    FindingLog findings;
    const AdifLayout layout = scan_adif(folder_.file("in.adi", c.text), findings).layout;
    const auto all = {layout.contacts, layout.in_header, layout.shared, layout.hurt,
                      layout.no_call};
    EXPECT_EQ(std::vector(all), (std::vector{c.contacts, c.in_header, c.shared, c.hurt, c.no_call}))
        << c.name;
    EXPECT_EQ(findings.count(FindingKind::kLostInHeader), c.in_header) << c.name;
    EXPECT_EQ(findings.count(FindingKind::kSharedRecord), c.shared) << c.name;
    EXPECT_EQ(findings.count(FindingKind::kNotAContact), c.no_call) << c.name;
  }
}

TEST_F(L2h, ContactsInAreContactsOutAndContactsTold) {
  std::mt19937 random(7);
  const auto pick = [&random](std::vector<const char*> texts) {
    return std::string(texts[random() % texts.size()]);
  };
  for (int log = 0; log < 200; ++log) {
    const std::string line_end = pick({"\n", "\r\n", "\r\n", "\r"});
    std::string text = pick({"", "\xEF\xBB\xBF"}) + pick({"", "text", "text<eoh>", "<EOH>"});
    text += repeated(random() % 3 == 0 ? random() % 25 : 1, line_end);
    const std::size_t contacts = random() % 40;
    for (std::size_t i = 0; i < contacts; ++i) {
      std::string tags = contact("JA1A" + std::to_string(i), pick({" ", " ", line_end.c_str()}));
      tags += pick({"", "<COMMENT:5><EOR>", "<NAME:1>\"", "<NOTES:10><CALL:1>ab"});
      text +=
          tags + pick({"<EOR>", "<eor>"}) + pick({line_end.c_str(), line_end.c_str(), "", " x"});
    }
    if (contacts == 0) text += "<EOH>";
    run_bytes(text);
    const std::size_t rows = report_.written + told(FindingKind::kDroppedNoDate);
    EXPECT_EQ(contacts + told(FindingKind::kNotAContact),
              rows + told(FindingKind::kLostInHeader) + told(FindingKind::kSharedRecord))
        << text;
  }
}

TEST_F(L2h, ALogThatWouldBeHurtIsConvertedOnlyWhenTheUserSaysSo) {
  const std::string text = repeated(3, contact("JA1ABC") + "<EOR>\n");
  reading_ = AdifReading::kAsk;
  try {
    run_bytes(text);
    FAIL();
  } catch (const FileError& error) {
    EXPECT_TRUE(contains(error.what(), "3 件の交信のうち 3 件")) << error.what();
    EXPECT_TRUE(contains(error.what(), "--reading classic")) << error.what();
  }
  EXPECT_FALSE(std::filesystem::exists(folder_ / "out.csv"));
  run_bytes(kHeader + text);
  EXPECT_EQ(report_.written, 3U);
  reading_ = AdifReading::kClassic;
  EXPECT_EQ(run_bytes(text), "");
  EXPECT_EQ(told(FindingKind::kAdifLayout), 1U);
  EXPECT_EQ(report_.findings.kept().front().call, "JA1ABC");
  run_bytes(kHeader + contact("A1A") + contact("A1B") + "<EOR>\n");
  EXPECT_EQ(report_.read, 1U);  // lines with a CALL
  EXPECT_EQ(texts(FindingKind::kContactCount), "交信 2 件、CALL のある行 1 行");
}

TEST_F(L2h, LossesOfAContactAreTold) {
  options_.remarks = {true, 1, false, ""};
  using Kind = FindingKind;
  const struct {
    std::string tags;
    Kind kind;
    std::string text;  // empty: nothing is told
  } cases[] = {
      {"<STATE:2>CA<MY_STATE:2>NY", Kind::kForeignTag, "STATE ← <MY_STATE:2>NY"},
      {"<MY_STATE:2>NY <DXCC:3>291", Kind::kForeignTag, "STATE ← <MY_STATE:2>NY"},
      {"<MY_STATE:2>NY<STATE:2>CA", Kind::kForeignTag, ""},
      {"<STATE:2>CA<MY_STATE:2>CA", Kind::kForeignTag, ""},
      {"<COMMENT:9>IOTA: yes", Kind::kForeignTag, "IOTA ← <COMMENT:9>IOTA: yes"},
      {"<FREQ:2>14<COMMENT:8>BAND: 6M", Kind::kForeignTag, ""},
      {"<MY_CNTY:2>OR<DXCC:3>291<MY_DXCC:3>339", Kind::kForeignTag,
       "CNTY ← <MY_CNTY:2>OR, DXCC ← <MY_DXCC:3>339"},
      {"<QSL_SENT:1>N<LOTW_QSL_SENT:1>Y", Kind::kForeignMarks, "「J* 」 ← <LOTW_QSL_SENT:1>Y"},
      {"<QSL_RCVD:1>Y<EQSL_QSL_RCVD:1>N", Kind::kForeignMarks, "「   」 ← <EQSL_QSL_RCVD:1>N"},
      {"<LOTW_QSL_SENT:1>Y<QSL_SENT:1>N", Kind::kForeignMarks, "「J  」 ← <LOTW_QSL_SENT:1>Y"},
      {"<LOTW_QSL_RCVD:1>N<QSL_SENT:1>Y", Kind::kForeignMarks, ""},
      {"<MODE:4>MFSK<SUBMODE:3>FT4", Kind::kSubmodeIgnored, "FT4 -> MFS"},
      {"<MODE:3>SSB<SUBMODE:3>USB", Kind::kSubmodeIgnored, ""},
      {"<COMMENT:3>TNX<SAT_NAME:5>AO-91<NOTES:0>", Kind::kNotCarried,
       "COMMENT=TNX, SAT_NAME=AO-91"},
      {"<POTA_REF:7>JP-1234<MY_SOTA_REF:9>JA/ST-013", Kind::kNotCarried, "POTA_REF=JP-1234"},
      {"<MODE:0>", Kind::kNoMode, ""},
      {"<CALL:6>ja1abc", Kind::kOddCall, "小文字があります"},
      {"<CALL:0>", Kind::kOddCall, "空です"},
      {"<CALL:6>ＪＡ１", Kind::kOddCall, "全角などの文字があります"},
      {"<CALL:8>JA1ABC/1 ", Kind::kOddCall, ""},
      {"<CALL:10>KH2/JA1ABC<DXCC:3>103", Kind::kDxccDisagrees, "DXCC 103、コールから国内局とした"},
      {"<CALL:6>JD1BMH<DXCC:3>192<JCG:5>10007", Kind::kDxccDisagrees, ""},
      {"<CALL:6>JA1ABC<DXCC:3>339", Kind::kDxccDisagrees, ""},
      {"<CALL:9>JA1/VK3ABC<DXCC:3>339", Kind::kDxccDisagrees, "DXCC 339、コールから国外局とした"},
      {"<DXCC:3>110<JCC:2>05", Kind::kDxccDisagrees, "DXCC 110、コールから国外局とした"},
      {"<QSO_DATE:8>20240230", Kind::kImpossibleDay, "20240230 1205"},
      {"<QSO_DATE:8>20240229", Kind::kImpossibleDay, ""},
      {"<QSO_DATE:8>2024/2/3", Kind::kBadDateOrTime, "2024/2/3 1205"},
  };
  for (const auto& c : cases) {
    column(1, "<MODE:2>CW" + c.tags);
    EXPECT_EQ(texts(c.kind), c.text) << c.tags;
    const bool wanted = !c.text.empty() || c.kind == Kind::kNoMode;
    EXPECT_EQ(told(c.kind), wanted ? 1U : 0U) << c.tags;
  }
}

TEST_F(L2h, ContactsThatAreThereTwiceAreTold) {
  const std::string tags = "<QSO_DATE:8>20240501<TIME_ON:6>010203<BAND:3>20m<MODE:2>CW<EOR>\r\n";
  const std::string again = "<QSO_DATE:8>20240501<TIME_ON:4>0102<BAND:3>20M<MODE:2>cw<EOR>\r\n";
  run("<CALL:4>A1AA" + tags + "<CALL:4>A1AB" + tags + "<EOR>\r\n<CALL:4>a1aa" + again +
      "<CALL:4>A1AA<BAND:3>40M" + tags.substr(0, 39) + "<MODE:2>CW<EOR>\r\n");
  EXPECT_EQ(texts(FindingKind::kDuplicate), "2 行目と同じ");
}

TEST_F(L2h, AStopIsHeardInsideALongRecord) {
  const std::string record = "<EOH>\n" + repeated(3, repeated(60'000, "CALL:1>") + "\n");
  const L2hJob job{folder_.file("in.adi", record),
                   folder_ / "out.csv",
                   {},
                   {folder_.path()},
                   AdifReading::kClassic};
  for (const double until : {0.1, 0.5}) {
    const RunContext context{[until](double done) { return done < until; }, {}};
    report_ = run_l2h(job, delivered<ConversionTables>(), delivered<CallTables>(),
                      delivered<PlaceTables>(), state_, context);
    EXPECT_TRUE(report_.stopped_by) << until;
    EXPECT_FALSE(std::filesystem::exists(job.output));
  }
}

TEST_F(L2h, NoLineEndComesOutOfAValue) {
  const std::string csv = run("<CALL:6>JA1ABC<QSO_DATE:8>20240501<NAME:3>a\rb<QTH:1>\r<EOR>\r\n");
  EXPECT_TRUE(contains(csv, "\"a b\"")) << csv;
  EXPECT_EQ(csv.find('\r'), csv.size() - 2);
  EXPECT_EQ(told(FindingKind::kLineEndInValue), 1U);
}

}  // namespace
}  // namespace tobarine
