// What the Hamlog-to-ADIF runs tell of contacts and files that are not quite what they should be.
#include <algorithm>

#include "convert/h2l_fixture.h"
#include "rules/duplicates.h"
#include "text/error.h"

namespace tobarine {
namespace {

TEST_F(H2l, AMissingDateOrTimeHasTheLengthZero) {
  EXPECT_TRUE(contains(logger32({.time = ""}), "<QSO_DATE:8:d>20240501 <TIME_ON:0> <MODE:3>SSB"));
  EXPECT_EQ(told(FindingKind::kBadDateOrTime), 1U);
  const std::string no_date = HamlogContact{}.line() + HamlogContact{.date = " "}.line();
  EXPECT_TRUE(contains(run(AdifTarget::kLogger32, no_date), "<QSO_DATE:0:d> <TIME_ON:4>2105"));
  EXPECT_TRUE(contains(eqsl({.time = "9J"}), "<TIME_ON:4>9J9J <MODE"));
  EXPECT_TRUE(contains(logger32({.grid = " PM95 "}), "<GRIDSQUARE:4>PM95 <EOR>"));
}

TEST_F(H2l, DoubtfulValuesGoOutAndAreTold) {
  const struct {
    HamlogContact contact;
    FindingKind kind;
    std::string tag, value, text;
  } cases[] = {
      {{.mode = " "}, FindingKind::kNoMode, "MODE", "", ""},
      {{.call = ""}, FindingKind::kOddCall, "CALL", "", "空です"},
      {{.call = "ja1abc"}, FindingKind::kOddCall, "CALL", "ja1abc", "小文字があります"},
      {{.call = "ＪＡ１ＡＢＣ"},
       FindingKind::kOddCall,
       "CALL",
       "ＪＡ１ＡＢＣ",
       "全角などの文字があります"},
      {{.call = "TEST"}, FindingKind::kOddCall, "CALL", "TEST", "コールサインの形ではありません"},
      {{.call = "/JA1ABC"},
       FindingKind::kOddCall,
       "CALL",
       "/JA1ABC",
       "コールサインの形ではありません"},
      {{.freq = "435/145"}, FindingKind::kTwoFrequencies, "BAND", "70CM", "435/145 -> 70CM"},
      {{.rmks1 = "VISA-CARD"}, FindingKind::kOddIota, "IOTA", "SA-CAR", "SA-CAR"},
      {{.qsl = "M", .rmks1 = "bob@example.com"},
       FindingKind::kOddManager,
       "QSL_VIA",
       "EXAMPLE.CO",
       "EXAMPLE.CO"},
      {{.rmks1 = "ﾀﾜｰ 599"}, FindingKind::kHalfWidthKana, "COMMENT", "ﾀﾜｰ 599", "COMMENT ﾀﾜｰ 599"},
      {{.code = "101"}, FindingKind::kOddCode, "JCC", "-", "101"},
      {{.date = "23/02/30"},
       FindingKind::kImpossibleDay,
       "QSO_DATE",
       "20230230",
       "23/02/30 21:05J"},
      {{.date = "24/01/15", .time = "25:00J"},
       FindingKind::kBadDateOrTime,
       "TIME_ON",
       "2500",
       "24/01/15 25:00J"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(tag(c.contact, c.tag), c.value) << finding_name(c.kind);
    EXPECT_EQ(only(c.kind), c.text) << finding_name(c.kind);
    EXPECT_EQ(report_.findings.about_contacts(), 1U) << finding_name(c.kind);
  }
  for (const char* call : {"JA1ABC", "4Q4QQ/P5", "JA1-12345", "3D2/R", "8J1ITU/1"}) {
    logger32({.call = call});
    EXPECT_EQ(report_.findings.about_contacts(), 0U) << call;
  }
}

TEST_F(H2l, EverydayWordsAreDoubtfulStates) {
  options_.write_state = true;
  struct Row {
    const char* rmks1;
    const char* state;
    bool doubtful;
  };
  for (const Row& row : {Row{"OK TNX", "OK", true},
                         {"TNX DE JA1ABC", "DE", true},
                         {"OK TNX NY", "OK", true},
                         {" ok ", "OK", false},
                         {"NY in May", "NY", false}}) {
    EXPECT_EQ(tag({.call = "W1AW", .code = "", .rmks1 = row.rmks1}, "STATE"), row.state);
    EXPECT_EQ(told(FindingKind::kDoubtfulState), row.doubtful ? 1U : 0U) << row.rmks1;
  }
  const HamlogContact tulsa{.call = "W1AW", .code = "", .rmks1 = "TULSA, OK TNX"};
  EXPECT_TRUE(contains(eqsl(tulsa), "<STATE:2>OK"));
  EXPECT_EQ(told(FindingKind::kDoubtfulState), 0U);
}

TEST_F(H2l, ContactsThatALogHoldsTwiceAreTold) {
  const HamlogContact first{.time = "21:05J"};
  const std::string log = first.line() + HamlogContact{.time = "21:06J"}.line() +
                          HamlogContact{.date = "24/05/01", .time = "12:05U", .qth = "x"}.line() +
                          HamlogContact{.mode = "CW"}.line() + HamlogContact{.freq = "14"}.line() +
                          HamlogContact{.call = "JA1ABD"}.line();
  run(AdifTarget::kLogger32, log);
  EXPECT_EQ(report_.written, 6U);
  EXPECT_EQ(only(FindingKind::kDuplicate), "No.1 と同じ");
  EXPECT_EQ(report_.findings.kept().front().line, 3U);
}

TEST(Duplicates, RemembersAMillionContactsAndTakesNoneForAnother) {
  constexpr std::size_t kContacts = 300'000;
  Duplicates duplicates;
  const auto add = [&](std::size_t i) {
    return duplicates.find_or_add("JA" + std::to_string(i), "20M", "CW", "20240501", "1205U", i);
  };
  std::size_t wrong = 0;
  for (std::size_t i = 1; i <= kContacts; ++i) wrong += add(i) == 0 ? 0U : 1U;
  EXPECT_EQ(wrong, 0U);
  std::size_t found = 0;
  for (std::size_t i = 1; i <= kContacts; ++i) found += add(i) == i ? 1U : 0U;
  EXPECT_GT(found, kContacts * 99 / 100);
}

TEST_F(H2l, OneStrayQuoteIsToldWithTheContactsInItsColumn) {
  const auto line = [](const std::string& call, const std::string& remark) {
    return call + ",24/05/01,21:05J,59,59,7,CW,,,,,," + remark + ",,0\r\n";
  };
  const std::string swallowed = line("JA1BBB", "") + line("JA1CCC", "b,") + "no contact\r\n";
  const std::string closed = line("JA1AAA", "\"a") + swallowed + line("JA1DDD", "c\" d,e");
  const struct {
    std::string log;
    std::size_t read, written;
    FindingKind kind;
    std::string text;
  } cases[] = {
      {closed + line("JA1EEE", ""), 5, 2, FindingKind::kQuoteSpansLines,
       "5 行目まで (その中の交信 3 件)"},
      {line("JA1AAA", "\"a\r\nb\""), 1, 1, FindingKind::kQuoteSpansLines,
       "2 行目まで (その中の交信 0 件)"},
      {line("JA1EEE", "") + line("JA1AAA", "") + "JA1FFF,24/05/01,21:05J,,,,,,,,,,,,\"x\n" +
           swallowed,
       5, 3, FindingKind::kUnclosedQuote, "6 行目まで (その中の交信 2 件)"},
  };
  for (const auto& c : cases) {
    const std::string records = run(AdifTarget::kEqsl, c.log);
    EXPECT_FALSE(report_.stopped_by) << *report_.stopped_by;
    EXPECT_EQ(report_.read, c.read);
    EXPECT_EQ(report_.written, c.written);
    EXPECT_EQ(told(FindingKind::kInsideQuotes), c.read - c.written);
    EXPECT_EQ(only(c.kind), c.text);
    for (const char end : {'\r', '\n'}) {  // one line a record, and no line end in a value
      EXPECT_EQ(static_cast<std::size_t>(std::ranges::count(records, end)), c.written) << records;
    }
  }
}

TEST_F(H2l, NoValueCarriesALineEndOut) {
  EXPECT_EQ(tag({.rmks1 = "a\rb"}, "COMMENT"), "a b");
  EXPECT_EQ(only(FindingKind::kLineEndInValue), "1 箇所");
  EXPECT_TRUE(contains(eqsl({.rmks1 = "ｱ\r\nb"}), "<COMMENT:4>ｱ  b  <EOR>\r\n"));
  EXPECT_EQ(only(FindingKind::kLineEndInValue), "2 箇所");
}

TEST_F(H2l, ContactsBehindALoneCrAreToldOrTheFileIsRefused) {
  for (const char* remark : {"x", "a\rb"}) {
    std::string log = HamlogContact{.rmks1 = remark}.line();
    log.replace(log.find("\r\n"), 2, "\r");
    for (const AdifTarget target : {AdifTarget::kLogger32, AdifTarget::kEqsl}) {
      run(target,
          HamlogContact{}.line() + log + log + HamlogContact{.call = "JA1XYZ"}.line() + log);
      EXPECT_EQ(report_.read, 5U);
      EXPECT_EQ(report_.written, 3U);
      EXPECT_EQ(told(FindingKind::kBehindCr), 2U);
      EXPECT_THROW(run(target, log + log + log), FileError);
    }
  }
}

TEST_F(H2l, BlankLinesAtTheEndAreNoContacts) {
  for (const AdifTarget target : {AdifTarget::kLogger32, AdifTarget::kEqsl}) {
    for (const char* end : {"\r\n", "\n  \r\n\r\n", " ", "\r\n\x1A"}) {
      run(target, HamlogContact{}.line() + end);
      EXPECT_EQ(report_.written, 1U);
      EXPECT_EQ(report_.read, 1U);
      EXPECT_FALSE(report_.stopped_by) << *report_.stopped_by;
    }
    run(target, HamlogContact{}.line() + "\r\n" + HamlogContact{}.line());
    ASSERT_TRUE(report_.stopped_by);
    EXPECT_TRUE(contains(*report_.stopped_by, "2 行目"));
  }
}

TEST_F(H2l, Utf8IsReadAndToldUtf16Refused) {
  const std::string utf8 = HamlogContact{.qth = "横浜", .rmks1 = "ﾀﾜｰ"}.line();
  options_.write_qth = true;
  for (const AdifTarget target : {AdifTarget::kLogger32, AdifTarget::kEqsl}) {
    for (const std::string& bytes : {utf8, "\xEF\xBB\xBF" + utf8}) {
      const H2lJob job{folder_.file("u.csv", bytes), folder_ / "out.adi", options_};
      const auto run = target == AdifTarget::kEqsl ? run_eqsl : run_h2l;
      report_ = run(job, delivered<ConversionTables>(), delivered<CallTables>(), {});
      const std::string records = from_cp932(TestFolder::bytes_of(job.output));
      EXPECT_TRUE(contains(records, "\r\n<CALL:6>JA1ABC ")) << records;
      EXPECT_TRUE(contains(records, "<COMMENT:3>ﾀﾜｰ "));
      EXPECT_EQ(contains(records, "<QTH:4>横浜 "), target == AdifTarget::kLogger32);
      EXPECT_EQ(told(FindingKind::kReadAsUtf8), 1U);
    }
  }
  std::string utf16 = "\xFF\xFE";
  for (const char c : HamlogContact{}.line()) utf16 += {c, '\0'};
  EXPECT_THROW(run_h2l({folder_.file("w.csv", utf16), folder_ / "w.adi", {}},
                       delivered<ConversionTables>(), delivered<CallTables>(), {}),
               FileError);
}

TEST_F(H2l, ASpreadsheetsCsvGetsAMessageOfItsOwn) {
  const auto message = [this](const std::string& log) -> std::string {
    try {
      run(AdifTarget::kLogger32, log);
      return "converted";
    } catch (const Error& error) {
      return error.what();
    }
  };
  for (const char* date :
       {"2024/05/01", "2024/5/1", "2024-05-01", "1-May-24", "5/1/2024", "2024年5月1日"}) {
    EXPECT_TRUE(contains(message(HamlogContact{.date = date}.line()), "Excel")) << date;
  }
  EXPECT_TRUE(contains(message("Call,Date,Time\r\n" + HamlogContact{}.line()), "見出し"));
  EXPECT_TRUE(contains(message("コール,交信日/JST,\r\n" + HamlogContact{}.line()), "見出し"));
  EXPECT_TRUE(contains(message("JA1ABC,240501,x\r\n"), "旧"));
  EXPECT_EQ(message(HamlogContact{.date = "24/1/15"}.line()), "converted");
}

}  // namespace
}  // namespace tobarine
