// Today's forms of zLog's logs: .ZLOX, .ZLO with their meaning, and the CSV. The samples are made
// by a program of their own (tools/make_zlog_samples.py), the first two from the same contacts.
#include <bit>
#include <gtest/gtest.h>

#include "paths.h"
#include "test_folder.h"
#include "text/error.h"
#include "text/strings.h"
#include "zlog/zcsv_reader.h"
#include "zlog/zcsv_writer.h"
#include "zlog/zlox_reader.h"
#include "zlog/zlox_writer.h"

namespace tobarine {
namespace {

namespace fs = std::filesystem;

const fs::path kZlox = fs::path(samples_folder()) / "contest.zlox";
const fs::path kCsv = fs::path(samples_folder()) / "contest_zlog.csv";
constexpr std::size_t kSampleContacts = 20;

template <typename Reader>
std::vector<ZlogQso> all_of(Reader& reader, FindingLog& findings) {
  std::vector<ZlogQso> contacts(1);
  while (reader.next(contacts.back(), findings)) contacts.emplace_back();
  contacts.pop_back();
  return contacts;
}

ZlogQso qso(const std::string& call = "JA1ABC") {
  ZlogQso qso;
  qso.moment = Moment::read("20240427", "2100", Zone::kJst);
  qso.call = call;
  qso.rst_sent = qso.rst_received = 599;
  qso.mode = "CW";
  qso.band = "7";
  qso.power = "M";
  return qso;
}

class ZlogToday : public ::testing::Test {
 protected:
  std::string zlox_of(const std::vector<ZlogQso>& contacts, const ZlogHead& head,
                      ZloxWriter::Form form = ZloxWriter::Form::kZlox) {
    ZloxWriter writer(folder_ / "out", form, head, findings_);
    std::size_t number = 0;
    for (const ZlogQso& contact : contacts) writer.write(contact, ++number, findings_);
    writer.close();
    return TestFolder::bytes_of(folder_ / "out");
  }
  std::string csv_of(const std::vector<ZlogQso>& contacts, Zone zone) {
    OutputFile file(folder_ / "out.csv");
    ZcsvWriter writer(file, zone);
    std::size_t number = 0;
    for (const ZlogQso& contact : contacts) writer.write(contact, ++number, findings_);
    file.close();
    return TestFolder::bytes_of(folder_ / "out.csv");
  }
  std::vector<ZlogQso> zlox(const std::string& bytes) {
    ZloxReader reader(folder_.file("in.zlox", bytes));
    return all_of(reader, findings_);
  }
  std::vector<ZlogQso> csv(const std::string& text) {
    ZcsvReader reader(folder_.file("in.csv", text));
    return all_of(reader, findings_);
  }
  std::size_t told(FindingKind kind) const { return findings_.count(kind); }
  std::string words() const { return findings_.kept().empty() ? "" : findings_.kept().back().text; }

  TestFolder folder_;
  FindingLog findings_;
};

TEST_F(ZlogToday, ReadsEveryFieldOfTheLongerRecord) {
  ZloxReader reader(kZlox);
  EXPECT_EQ(reader.head().station_call, "JA1QAA");
  EXPECT_EQ(reader.head().contest, "ALL JA コンテスト");
  EXPECT_EQ(zone_text(reader.zone()), "JST (ファイルに記されている)");
  EXPECT_EQ(reader.contest().contacts, kSampleContacts);
  const auto contacts = all_of(reader, findings_);
  ASSERT_EQ(contacts.size(), kSampleContacts);
  EXPECT_TRUE(findings_.kept().empty());
  const ZlogQso& ft8 = contacts[16];
  EXPECT_EQ(ft8.moment->date() + ft8.moment->time(), "20240428115931");
  EXPECT_EQ(ft8.call + ft8.mode + ft8.band + ft8.power, "JA7QBQFT87M");
  EXPECT_EQ(ft8.sent_number + ft8.received_number + ft8.multi1, "10M07M07M");
  EXPECT_EQ(ft8.operator_name + ft8.memo + ft8.freq_khz + ft8.pc_name, "JA1QAB(7041.3)7041.3PC2");
  EXPECT_EQ(ft8.serial, 17);
  EXPECT_EQ(ft8.power2 + ft8.reserve3, 49);
  EXPECT_EQ(ft8.tx, 2U);
  EXPECT_TRUE(ft8.new_multi1 && ft8.cq && ft8.qsl_wish == QslWish::kPlease && !ft8.forced);
  EXPECT_TRUE(contacts[17].forced && contacts[17].mode == "FT4" && contacts[17].points == 3);
  EXPECT_TRUE(contacts[18].invalid && contacts[18].dupe && contacts[18].mode == "Other");
  EXPECT_TRUE(contacts[19].qsy_violation && contacts[19].verified && contacts[19].band == "10G");
}

TEST_F(ZlogToday, OneFormBecomesTheOtherToTheByte) {
  ZloxReader binary(kZlox);
  const auto contacts = all_of(binary, findings_);
  EXPECT_TRUE(csv_of(contacts, Zone::kJst) == TestFolder::bytes_of(kCsv));
  ZcsvReader text(kCsv);
  const auto rows = all_of(text, findings_);
  EXPECT_TRUE(zlox_of(rows, binary.head()) == TestFolder::bytes_of(kZlox));
  EXPECT_TRUE(findings_.kept().empty()) << words();
}

TEST_F(ZlogToday, TheShorterRecordTakesTheFrequencyFromTheMemo) {
  ZloxReader reader(kZlox);
  const auto contacts = all_of(reader, findings_);
  const std::string bytes = zlox_of(contacts, reader.head(), ZloxWriter::Form::kZlo);
  EXPECT_EQ(bytes.size(), 256 * (kSampleContacts + 1));
  EXPECT_EQ(told(FindingKind::kZlogFieldCut), 4U);  // the contacts with what it has no place for
  ZloxReader again(folder_ / "out");
  const auto read = all_of(again, findings_);
  ASSERT_EQ(read.size(), kSampleContacts);
  EXPECT_EQ(read[16].freq_khz + read[16].mode, "7041.3FT8");
  EXPECT_EQ(read[17].freq_khz + read[17].mode + read[17].pc_name, "FT4");
  for (std::size_t i = 0; i < kSampleContacts; ++i) {
    EXPECT_EQ(*read[i].moment, *contacts[i].moment);
    EXPECT_EQ(read[i].call + read[i].band, contacts[i].call + contacts[i].band);
  }
}

TEST_F(ZlogToday, AFrequencyIsANumberInParentheses) {
  const struct {
    const char *memo, *khz;
  } cases[] = {{"(7012.3)", "7012.3"},
               {"x ( 144250 ) y", "144250"},
               {"(0)", ""},
               {"(0.0)", ""},
               {"(hi) (7012)", ""},
               {"(7012", ""},
               {"7012)", ""},
               {"(7.012.3)", ""},
               {"(.)", ""}};
  for (const auto& c : cases) EXPECT_EQ(freq_in_memo(c.memo), c.khz) << c.memo;
}

TEST_F(ZlogToday, EveryCodeAndZoneComesBack) {
  std::vector<ZlogQso> contacts;
  for (const std::string_view band : zlo::kBands) {
    for (const std::string_view mode : zlox::kModes) {
      contacts.push_back(qso());
      contacts.back().band = band;
      contacts.back().mode = mode;
      contacts.back().power = zlox::kPowers[contacts.size() % 4];
      contacts.back().moment =
          Moment::read("19991231", "2359" + std::to_string(10 + contacts.size() % 50), Zone::kUtc);
    }
  }
  for (const Zone zone : {Zone::kUtc, Zone::kJst}) {
    for (const auto& read : {zlox(zlox_of(contacts, {"JA1ABC", "x", zone})),
                             zlox(zlox_of(contacts, {"", "", zone}, ZloxWriter::Form::kZlo)),
                             csv(csv_of(contacts, zone))}) {
      ASSERT_EQ(read.size(), contacts.size());
      for (std::size_t i = 0; i < read.size(); ++i) {
        EXPECT_EQ(read[i].band + read[i].mode + read[i].power,
                  contacts[i].band + contacts[i].mode + contacts[i].power);
        EXPECT_EQ(read[i].moment->utc_seconds(), contacts[i].moment->utc_seconds());
        EXPECT_EQ(read[i].moment->stated_in(), zone);
      }
    }
  }
  EXPECT_TRUE(findings_.kept().empty()) << words();
}

TEST_F(ZlogToday, TheZoneIsTheHeadersTheContestsOrTheUsers) {
  const std::string bytes = TestFolder::bytes_of(kZlox);
  const auto zone = [&](std::string_view word, std::optional<char> chosen) {
    const auto file = folder_.file("in.zlox", std::string(bytes).replace(84, 2, word));
    ZloxReader reader(file, chosen);
    const auto contacts = all_of(reader, findings_);
    EXPECT_EQ(contacts[0].moment->time(), reader.zone().letter == 'J' ? "120000" : "210000");
    return zone_text(reader.zone());
  };
  EXPECT_EQ(zone("\xFF\x7F", {}), "UTC (ファイルに記されている)");
  EXPECT_EQ(zone("\xFF\xFF", {}), "JST (DX コンテストではないので)");
  EXPECT_EQ(zone("\xE4\xFD", 'U'), "UTC (選んだもの。ファイルには JST とあります)");
}

TEST_F(ZlogToday, BrokenBinaryLogsLoseNothingSilently) {
  const std::string bytes = TestFolder::bytes_of(kZlox);
  EXPECT_EQ(zlox(bytes.substr(0, 384 * 11 + 100)).size(), 10U);
  EXPECT_EQ(told(FindingKind::kRecordCutOff), 2U);
  EXPECT_EQ(findings_.kept()[0].call, "JA9QBK");
  EXPECT_TRUE(contains(words(), "20 件とあるが、あるのは 11 件"));
  findings_ = {};
  std::string odd = bytes;
  odd.replace(384, 8, std::string(8, '\0'));  // no day
  odd[384 + 92] = 8;
  odd[384 + 93] = 16;
  odd[384 + 280] = 3;
  const auto contacts = zlox(odd);
  ASSERT_EQ(contacts.size(), kSampleContacts);
  EXPECT_TRUE(!contacts[0].moment && contacts[0].mode.empty() && contacts[0].band.empty());
  EXPECT_EQ(words(), "モード「コード 8」、バンド「コード 16」、QSL「コード 3」、日時が無い");
  EXPECT_EQ(contacts[1].mode, "CW");
  for (const char* text : {"", "ZLO", "ZLOX"}) {
    if (std::string_view(text) == "ZLOX") {
      EXPECT_TRUE(zlox(text).empty());  // a header cut off: no contact, but no other form either
    } else {
      EXPECT_THROW(zlox(text), FileError) << text;
    }
  }
}

TEST_F(ZlogToday, WhatDoesNotFitIsCutWholeCharactersAndReported) {
  ZlogQso wide = qso("VP2E/JA1ABC/P");
  for (int i = 0; i < 40; ++i) wide.memo += "漢";
  wide.memo = "x" + wide.memo;
  wide.points = 300;
  wide.freq_khz = "10368100.55";
  wide.area = "10";
  wide.operator_name = "😀";
  const auto read = zlox(zlox_of({wide}, {}));
  EXPECT_EQ(told(FindingKind::kZlogFieldCut), 2U);
  EXPECT_EQ(findings_.kept()[0].text, "コール、得点、メモ、周波数");
  EXPECT_EQ(told(FindingKind::kNotEncodable), 1U);
  EXPECT_EQ(read[0].call, "VP2E/JA1ABC/");
  EXPECT_EQ(read[0].memo.size(), 1U + 31 * 3);
  EXPECT_EQ(read[0].points, 255U);
  EXPECT_EQ(read[0].operator_name, "?");
  findings_ = {};
  ZlogQso bandless = qso(), dateless = qso(), timeless = qso(), sstv = qso();
  bandless.band = "5";
  dateless.moment.reset();
  timeless.moment = Moment::read("20240427", "", Zone::kUtc);
  sstv.mode = "SSTV";
  const std::vector<ZlogQso> contacts = {bandless, dateless, timeless, qso(""), sstv};
  EXPECT_EQ(zlox(zlox_of(contacts, {})).size(), 1U);
  EXPECT_EQ(told(FindingKind::kNoZlogBand), 1U);
  EXPECT_EQ(told(FindingKind::kNoDateOrCall), 3U);
  EXPECT_EQ(told(FindingKind::kOtherMode), 1U);
}

TEST_F(ZlogToday, CsvsOfOtherVersionsAreRead) {
  const auto contacts =
      csv("Date,Time,TimeZone,CallSign,Band,Mode,New,Memo\r\n"
          "2024/04/27,21:00:00,UTC,JA1ABC,7 MHz,CW,1,\"a \"\"b\"\"\r\nc, (7012.3)\"\r\n"
          "\r\n"
          "2024/04/27,21:00,,JA1ABC,10 GHz & up,SSTV\n"
          "2024/13/27,21:00,JST,,7,CW,,,9\n");
  ASSERT_EQ(contacts.size(), 3U);
  EXPECT_EQ(contacts[0].memo, "a \"b\"\r\nc, (7012.3)");
  EXPECT_EQ(contacts[0].freq_khz, "7012.3");
  EXPECT_EQ(contacts[0].moment->time(), "210000");
  EXPECT_EQ(contacts[1].band, "10G");
  EXPECT_EQ(told(FindingKind::kUnreadColumn), 1U);
  ASSERT_EQ(told(FindingKind::kOddField), 2U);
  EXPECT_EQ(findings_.kept()[1].line, 5U);
  EXPECT_EQ(findings_.kept()[1].text, "欄の数「6」、モード「SSTV」、TimeZone「」");
  EXPECT_EQ(words(), "バンド「7」、欄の数「9」、日時「2024/13/27 21:00」、日時が無い、コール「」");
  csv("Date,Time,TimeZone,CallSign,Points,Dupe\n2024/04/27,21:00,JST,JA1ABC,x,maybe\n");
  EXPECT_TRUE(words().starts_with("Points「x」、Dupe「maybe」"));
  EXPECT_THROW(csv("JA1ABC,24/05/01,12:00U\r\n"), FileError);
  EXPECT_THROW(csv(""), FileError);
}

}  // namespace
}  // namespace tobarine
