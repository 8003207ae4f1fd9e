// zLog's two kinds of logs on their way to ADIF: what comes into the intermediate file, what is
// left out, what is reported.
#include <bit>
#include <gtest/gtest.h>

#include "convert/h2l.h"
#include "tables.h"
#include "test_folder.h"
#include "text/error.h"
#include "text/strings.h"
#include "zlog/contest.h"
#include "zlog/intermediate.h"
#include "zlog/plausible.h"
#include "zlog/zlo_record.h"

namespace tobarine {
namespace {

// A contact in the columns of a text log.
struct Line {
  std::string date = "2005/06/02", time = "12:34", call = "JA1ABC", band = "7", mode = "CW", memo;

  std::string text() const {
    std::string line(79, ' ');
    line.replace(0, date.size(), date).replace(11, time.size(), time);
    line.replace(17, call.size(), call).replace(30, 3, "599").replace(34, 3, "001");
    line.replace(42, 3, "589").replace(66, band.size(), band).replace(71, mode.size(), mode);
    return line + memo + "\r\n";
  }
};

// A binary record. Day 38505.5 is 2005/06/02 12:00.
struct Record {
  double time = 38505.5;
  std::string call = "JA1ABC";
  unsigned mode = 0, band = 2;
  std::string memo;

  std::string bytes() const {
    zlo::Record record{};
    zlo::write_64(record, zlo::kTime, std::bit_cast<std::uint64_t>(time));
    const auto put = [&record](zlo::Area area, const std::string& text) {
      const std::string encoded = to_cp932(text);
      record[area.length_at] = static_cast<unsigned char>(encoded.size());
      std::copy(encoded.begin(), encoded.end(), record.begin() + area.length_at + 1);
    };
    put(zlo::kCall, call);
    put(zlo::kMemo, memo);
    zlo::write_16(record, zlo::kRstSent, 599);
    zlo::write_16(record, zlo::kRstReceived, 589);
    record[zlo::kMode] = static_cast<unsigned char>(mode);
    record[zlo::kBand] = static_cast<unsigned char>(band);
    return {record.begin(), record.end()};
  }
};

std::string header(const std::string& contest, unsigned zone = 0) {
  const Record record{.time = 0, .call = "JA1ZZZ", .memo = contest};
  return record.bytes().replace(84, 2, {static_cast<char>(zone), static_cast<char>(zone >> 8)});
}

class ZlogIn : public ::testing::Test {
 protected:
  // The rows of the intermediate file, UTF-8.
  std::vector<std::string> rows(H2lSource source, const std::string& bytes) {
    H2lJob job{folder_.file("log", bytes), folder_ / "out.adi", {}, source};
    job.intermediate = folder_ / "zlog_1.csv";
    std::filesystem::remove(job.intermediate);
    job.zlog_zone = zone_;
    report_ = run_h2l(job, delivered<ConversionTables>(), delivered<CallTables>(), {});
    return text_lines(TestFolder::bytes_of(job.intermediate));
  }
  std::optional<char> zone_;  // chosen by the user
  std::vector<std::string> all(const std::string& lines) {
    return rows(H2lSource::kZlogAll, to_cp932("zLog for Windows \r\n" + lines));
  }
  std::vector<std::string> zlo(const std::string& records) {
    return rows(H2lSource::kZlogZlo, header("", 0x7FFF) + records);
  }
  std::string freq(const std::vector<std::string>& rows, std::size_t row) {
    std::vector<std::string> fields;
    for_each_piece(rows[row], ',', [&](std::string_view f) { fields.emplace_back(f); });
    return fields[6].substr(1, fields[6].size() - 2);
  }
  std::string adif() { return TestFolder::bytes_of(folder_ / "out.adi"); }
  std::size_t told(FindingKind kind) const { return report_.findings.count(kind); }
  // What the first finding of a kind says.
  std::string words(FindingKind kind) const {
    for (const Finding& finding : report_.findings.kept()) {
      if (finding.kind == kind) return finding.text;
    }
    return {};
  }

  TestFolder folder_;
  ConversionReport report_;
};

TEST_F(ZlogIn, ATextLineBecomesSixteenFields) {
  const auto lines = all(Line{.memo = "(7025) メモ, \"x\""}.text());
  ASSERT_EQ(lines.size(), 1U);
  EXPECT_EQ(lines[0],
            "\"JA1ABC\",\"\",\"05/06/02\",\"12:34U\",\"599\",\"589\",\"7.025\",\"CW\",\"\",\"\","
            "\"\",\"\",\"\",\"\",\"\",\"JA1ABC\"");
  EXPECT_EQ(report_.read, 1U);
  EXPECT_EQ(told(FindingKind::kOddField), 0U);
  EXPECT_TRUE(contains(adif(), "<CALL:6>JA1ABC <QSO_DATE:8:d>20050602 <TIME_ON:4>1234 "));
}

TEST_F(ZlogIn, FrequencyComesFromTheMemoOrTheBand) {
  std::string log;
  for (const char* memo :
       {"(7025)", "x ( 7030 ) y", "(0)", "(123)", "(7025.5)", "(7050", ")7060(", "", "(7.02)"}) {
    log += Line{.memo = memo}.text();
  }
  log += Line{.band = "14", .memo = "(14025)"}.text();
  log += Line{.band = "1200", .memo = "(123456)"}.text();
  log += Line{.band = "4630"}.text() + Line{.band = "10G"}.text();
  const auto lines = all(log);
  const char* expected[] = {"7.025", "7.030", "7",      "7",      "7", "7", "7",
                            "7",     "7..02", "14.025", "14.025", "",  "10"};
  for (std::size_t i = 0; i < std::size(expected); ++i) EXPECT_EQ(freq(lines, i), expected[i]) << i;
  EXPECT_EQ(told(FindingKind::kFreqKept), 5U);
  EXPECT_EQ(words(FindingKind::kFreqMisread), "(7.02) -> 7..02");
  EXPECT_EQ(told(FindingKind::kFreqOffBand), 2U);  // 14.025 on 1200, and "10" for 10 GHz
  EXPECT_EQ(told(FindingKind::kOddField), 1U);     // 4630
}

TEST(ZlogCall, IsSplitAtItsFirstSlash) {
  const struct {
    const char *call, *home, *portable;
    bool prefix;
  } cases[] = {
      {"JA1ABC", "JA1ABC", "", false},
      {"JA1ABC/2", "JA1ABC", "2", false},
      {"KH6/JA1ABC", "JA1ABC", "KH6", true},
      {"JA1ABC/KH6", "JA1ABC", "KH6", false},
      {"JA1AB/KH6AB", "JA1AB", "KH6AB", false},
      {"A/9", "A", "9", false},
      {"/JA1ABC", "JA1ABC", "", true},
      {"VP2E/JA1ABC/P", "JA1ABC/P", "VP2E", true},
      {"ABC/", "ABC", "", false},
  };
  for (const auto& c : cases) {
    const CallParts parts = split_call(c.call);
    EXPECT_EQ(parts.home, c.home) << c.call;
    EXPECT_EQ(parts.portable, c.portable) << c.call;
    EXPECT_EQ(parts.prefix, c.prefix) << c.call;
  }
}

TEST_F(ZlogIn, CallsComeBackWholeAndTheMarkNeverReachesTheComment) {
  const auto lines = all(Line{.call = "KH6/JA1ABC"}.text() + Line{.call = "JA1ABC/2"}.text());
  EXPECT_TRUE(contains(lines[0], "\"JA1ABC\",\"KH6\",") &&
              contains(lines[0], "\"$DX\",\"KH6/JA1ABC\""));
  EXPECT_TRUE(contains(adif(), "<CALL:10>KH6/JA1ABC ") && contains(adif(), "<CALL:8>JA1ABC/2 "));
  EXPECT_FALSE(contains(adif(), "COMMENT") || contains(adif(), "$DX"));
}

TEST_F(ZlogIn, TextLogsAreReadTolerantlyAndOddLinesNamed) {
  std::string shifted = Line().text();
  shifted.insert(0, " ");
  const auto lines = all(Line().text() + "\r\n" + shifted + Line{.date = "1925/01/01"}.text() +
                         Line{.call = "VP2E/JA1ABC/P"}.text() + "2005/06/02 12:34 JA1XYZ");
  ASSERT_EQ(lines.size(), 6U);
  EXPECT_EQ(report_.read, 6U);
  EXPECT_EQ(told(FindingKind::kOddField), 5U);
  EXPECT_EQ(report_.findings.kept().front().line, 3U);
  EXPECT_EQ(lines[1],
            "\"\",\"\",\"\",\"U\",\"\",\"\",\"\",\"\",\"\",\"\",\"\",\"\",\"\",\"\",\"\",\"\"");
  EXPECT_TRUE(lines[5].starts_with("\"JA1XYZ\",\"\",\"05/06/02\",\"12:34U\",\"\",\"\",\"\","));
}

// Newer logs put the operator in front of the memo, which moves out of its column.
TEST_F(ZlogIn, WhatStandsOutsideTheColumnsIsNamed) {
  const std::string op = "%%JA1ABC%%          ";  // as wide as the column
  all(Line{.memo = op + "(7012.3) 599"}.text() + Line{.memo = op + "(0)"}.text() +
      Line{.memo = "(7012)             (hi) (3)"}.text() + Line{.memo = op + "TNX (hi)"}.text());
  EXPECT_EQ(told(FindingKind::kFreqNotRead), 1U);
  EXPECT_EQ(words(FindingKind::kFreqNotRead), "(7012.3)");
  all(Line().text() + "2005/06/02 12:34 JA1XYZ\r2005/06/02 12:35 JA1XYY\r\n");
  EXPECT_EQ(report_.written, 2U);
  EXPECT_EQ(told(FindingKind::kOddField), 1U);
  EXPECT_TRUE(contains(words(FindingKind::kOddField), "CR"));
}

TEST_F(ZlogIn, ForeignTextLogsAreRefusedBeforeAnythingIsWritten) {
  for (const char* bytes : {"", "mon day time  callsign\r\n", "JA1ABC,24/05/01\r\n",
                            "zLog for Windows \r2005/06/02 12:34 JA1XYZ\r"}) {
    EXPECT_THROW(rows(H2lSource::kZlogAll, bytes), FileError) << bytes;
  }
  EXPECT_FALSE(std::filesystem::exists(folder_ / "out.adi"));
  EXPECT_TRUE(all("").empty());
  EXPECT_EQ(rows(H2lSource::kZlogAll, "x 2.2 zLog for Windows 1\n" + Line().text()).size(), 1U);
  EXPECT_EQ(report_.written, 1U);
}

TEST_F(ZlogIn, BinaryTimesFollowTheFixedArithmetic) {
  const struct {
    double time;
    const char* expected;
  } cases[] = {
      {38505.5, "\"05/06/02\",\"12:00U\""},
      {36892, "\"01/01/01\",\"00:00U\""},
      {36891.75, "\"00/12/31\",\"18:00U\""},  // before 2001
      {32768, "\"89/09/17\",\"00:00U\""},
      {65535.999, "\"79/06/04\",\"23:58U\""},
      {45000 + 719 / 1440.0, "\"23/03/15\",\"11:59U\""},
      {45000 + 86399.98 / 86400, "\"23/03/15\",\"24:00U\""},  // a second is a little too short
  };
  std::string log;
  for (const auto& c : cases) log += Record{.time = c.time}.bytes();
  const auto lines = zlo(log);
  ASSERT_EQ(lines.size(), std::size(cases));
  for (std::size_t i = 0; i < lines.size(); ++i) {
    EXPECT_TRUE(contains(lines[i], cases[i].expected)) << lines[i];
  }
}

TEST_F(ZlogIn, BinaryContactsOutsideTheAcceptedDaysAreLeftOut) {
  std::string log = Record().bytes();
  for (const double time : {0.0, 32767.9, 65536.0, -38505.5, 1e300}) {
    log += Record{.time = time, .call = "JA2OUT"}.bytes();
  }
  const auto lines = zlo(log + Record{.call = "x", .band = 3}.bytes());
  EXPECT_EQ(lines.size(), 2U);
  EXPECT_EQ(report_.read, 7U);
  EXPECT_EQ(report_.written, 2U);
  EXPECT_EQ(told(FindingKind::kLeftOutByTime), 5U);
  EXPECT_EQ(report_.findings.kept().front().line, 3U);
  EXPECT_EQ(report_.findings.kept().front().call, "JA2OUT");
  EXPECT_EQ(report_.findings.kept()[5].kind, FindingKind::kOddField);
  EXPECT_EQ(report_.findings.kept()[5].line, 8U);  // records, not rows, are counted
}

TEST_F(ZlogIn, UnknownCodesKeepTheTextsOfTheContactBefore) {
  const auto lines =
      zlo(Record{.mode = 4, .band = 9}.bytes() + Record{.mode = 6, .band = 16}.bytes() +
          Record{.mode = 5, .memo = "(14025)"}.bytes() + Record{.mode = 7}.bytes() +
          Record{.mode = 8}.bytes());
  EXPECT_TRUE(contains(lines[0], "\"50\",\"RTY\""));
  EXPECT_TRUE(contains(lines[1], "\"50\",\"RTY\""));
  EXPECT_TRUE(contains(lines[2], "\"14.025\",\"Other\""));
  EXPECT_TRUE(contains(lines[3], "\"7\",\"Other\""));
  EXPECT_EQ(told(FindingKind::kModeKept), 3U);
  EXPECT_EQ(words(FindingKind::kModeKept), "6 (今の zLog では FT8) -> 「RTY」");
  EXPECT_EQ(words(FindingKind::kBandKept), "16 -> 「50」");
}

TEST_F(ZlogIn, BinaryTextsAreCountedInBytes) {
  std::string record = Record{.call = "JA1ABCDEFGHI", .memo = "(7025)"}.bytes();
  record[8] = 99;   // longer than the area
  record[175] = 3;  // "(70": no ")"
  const auto lines = zlo(Record{.memo = "(7010)"}.bytes() + record);
  EXPECT_TRUE(lines[1].starts_with("\"JA1ABCDEFGHI\",")) << lines[1];
  EXPECT_EQ(freq(lines, 1), "7.010");
}

TEST_F(ZlogIn, ACutOffBinaryLogLosesItsLastRecordOnlyAndSaysSo) {
  for (const std::size_t bytes : {20U, 100U, 128U, 255U}) {
    const auto lines = zlo(Record().bytes() + Record{.call = "JA9CUT"}.bytes().substr(0, bytes));
    EXPECT_EQ(lines.size(), 1U) << bytes;
    EXPECT_EQ(told(FindingKind::kRecordCutOff), 1U) << bytes;
    EXPECT_EQ(report_.findings.kept().front().call, "JA9CUT");
  }
}

TEST_F(ZlogIn, ForeignBinaryLogsAreRefused) {
  EXPECT_THROW(rows(H2lSource::kZlogZlo, ""), FileError);
  EXPECT_THROW(rows(H2lSource::kZlogZlo, std::string(255, 'x')), FileError);
  EXPECT_THROW(rows(H2lSource::kZlogZlo, std::string(2560, 'x')), FileError);
  // The newer form: twice 384 bytes, of which every third 256 look like a contact.
  std::string newer = header("").replace(0, 4, "ZLOX") + std::string(128, '\0');
  newer += Record().bytes() + std::string(128, '\0');
  EXPECT_THROW(rows(H2lSource::kZlogZlo, newer), FileError);
  EXPECT_EQ(rows(H2lSource::kZlogZlo, std::string(256, 'x') + Record().bytes()).size(), 1U);
  EXPECT_TRUE(zlo("").empty());
}

TEST_F(ZlogIn, AStopInTheFirstHalfLeavesTheOutputAlone) {
  std::string log = "zLog for Windows \r\n";
  for (int i = 0; i < 5000; ++i) log += Line{}.text();
  const H2lJob job{folder_.file("log", log),
                   folder_.file("out.adi", "the user's"),
                   {},
                   H2lSource::kZlogAll,
                   nullptr,
                   'U',
                   folder_ / "zlog_1.csv"};
  const ConversionReport report =
      run_h2l(job, delivered<ConversionTables>(), delivered<CallTables>(),
              {[](double) { return false; }, {}});
  EXPECT_TRUE(contains(report.stopped_by.value_or(""), "まだ書いていません"));
  EXPECT_EQ(adif(), "the user's");
}

TEST_F(ZlogIn, InputOutputAndIntermediateFileMustDiffer) {
  const auto log = folder_.file("log.all", "zLog for Windows\r\n");
  H2lJob job{log, folder_ / "out.adi", {}, H2lSource::kZlogAll};
  job.intermediate = log;
  const auto run = [&] {
    return run_h2l(job, delivered<ConversionTables>(), delivered<CallTables>(), {});
  };
  EXPECT_THROW(run(), UsageError);
  job.intermediate = folder_ / "x";
  job.output = log;
  EXPECT_THROW(run(), UsageError);
}

// The header wins over the contest, the user over both.
TEST_F(ZlogIn, TheZoneComesFromTheHeaderTheContestOrTheUser) {
  const unsigned utc = 0x7FFF, jst = 0xFDE4;
  const struct {
    unsigned word;
    bool dx;
    char expected;
  } cases[] = {{utc, true, 'U'},    {utc, false, 'U'}, {jst, true, 'J'},    {jst, false, 'J'},
               {0, true, 'U'},      {0, false, 'J'},   {0xFFFF, true, 'U'}, {0xFFFF, false, 'J'},
               {0xFDE5, true, 'U'}, {9, false, 'J'}};
  for (const auto& c : cases) {
    for (const std::optional<char> chosen : {std::optional<char>(), {'U'}, {'J'}}) {
      zone_ = chosen;
      const char letter = chosen.value_or(c.expected);
      const bool certain = c.word == utc || c.word == jst;
      const auto lines =
          rows(H2lSource::kZlogZlo,
               header(c.dx ? "CQWW DX Contest" : "ALL JA コンテスト", c.word) + Record().bytes());
      EXPECT_TRUE(contains(lines[0], letter == 'J' ? "12:00J" : "12:00U")) << c.word << c.dx;
      EXPECT_TRUE(contains(adif(), letter == 'J' ? "<TIME_ON:4>0300" : "<TIME_ON:4>1200"));
      const bool against = certain && letter != c.expected;
      EXPECT_EQ(told(FindingKind::kZoneAgainstFile), against ? 1U : 0U);
      EXPECT_EQ(told(FindingKind::kZoneRead), against ? 0U : 1U);
      const std::string text = report_.findings.kept()[0].text;
      EXPECT_TRUE(text.starts_with(letter == 'J' ? "JST (" : "UTC (")) << text;
      EXPECT_TRUE(contains(text, against   ? "ファイルには"
                                 : chosen  ? "選んだもの)"
                                 : certain ? "(ファイルに記されている)"
                                 : c.dx    ? "DX コンテストなので)"
                                           : "DX コンテストではないので)"))
          << text;
    }
  }
  zone_.reset();
  EXPECT_TRUE(contains(all(Line().text())[0], "12:34U"));
  EXPECT_EQ(words(FindingKind::kZoneRead), "UTC (ファイルには記されていない)");
  zone_ = 'J';
  EXPECT_TRUE(contains(all(Line().text())[0], "12:34J"));
}

TEST(Contest, IsReadFromTheHeaderRecord) {
  const TestFolder folder;
  const auto contest = [&](const std::string& bytes) {
    return read_contest(folder.file("a.zlo", bytes));
  };
  const ContestInfo dx = contest(header(" CQWW DX Contest  ") + std::string(2304, '\0'));
  EXPECT_EQ(dx.name, "CQWW DX Contest");
  EXPECT_TRUE(dx.is_dx);
  EXPECT_EQ(dx.contacts, 9U);
  EXPECT_FALSE(contest(header("cqww dx contest")).is_dx);
  EXPECT_TRUE(contest(header("ＯＫ／ＯＭＤＸコンテスト（ＥＵ）")).is_dx);
  EXPECT_EQ(contest(header("")).name, "");
  EXPECT_FALSE(contest(header("")).is_dx);
  EXPECT_EQ(contest(header("").substr(0, 200)).contacts, 0U);
  EXPECT_EQ(contest(header("") + std::string(128, ' ')).contacts, 0U);
  EXPECT_EQ(contest(header("") + std::string(256 + 128, ' ')).contacts, 2U);
  EXPECT_EQ(dx_contest_index("YVDXコンテスト (dx)"), 43U);
}

}  // namespace
}  // namespace tobarine
