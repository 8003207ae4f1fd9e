// Today's zLog logs as neutral contacts, and back.
#include "zlog/zlog_contact.h"

#include <algorithm>
#include <gtest/gtest.h>

#include "paths.h"
#include "test_folder.h"
#include "text/strings.h"
#include "zlog/contest_id.h"
#include "zlog/zlog_band.h"
#include "zlog/zlog_streams.h"

namespace tobarine {
namespace {

namespace fs = std::filesystem;

// "NAME=value" of every field, in the order of their names.
std::vector<std::string> fields_of(const Contact& contact) {
  std::vector<std::string> fields;
  for (std::size_t i = 0; i < contact.size(); ++i) {
    fields.push_back(std::string(contact[i].name).append("=").append(contact[i].value));
  }
  std::ranges::sort(fields);
  return fields;
}

std::vector<Contact> all_of(ContactSource& source, FindingLog& findings) {
  std::vector<Contact> contacts(1);
  while (source.next(contacts.back(), findings)) contacts.emplace_back();
  contacts.pop_back();
  return contacts;
}

class ZlogContactTest : public ::testing::Test {
 protected:
  std::vector<Contact> zlox(const fs::path& file, Invalid invalid = Invalid::kKeep) {
    ZloxReader reader(file);
    const ZlogHead head = reader.head();
    ZlogSource source(std::move(reader), head, invalid);
    return all_of(source, findings_);
  }
  std::vector<Contact> sample(Invalid invalid = Invalid::kKeep) {
    return zlox(fs::path(samples_folder()) / "contest.zlox", invalid);
  }
  // Through a file and back.
  std::vector<Contact> through(const std::vector<Contact>& contacts, ZloxWriter::Form form,
                               Zone zone) {
    ZloxSink sink(folder_ / "out", form, zone);
    for (const Contact& contact : contacts) sink.put(contact, findings_);
    sink.finish();
    return zlox(folder_ / "out");
  }
  std::string words(FindingKind kind) const {
    for (const Finding& finding : findings_.kept()) {
      if (finding.kind == kind) return finding.text;
    }
    return {};
  }

  TestFolder folder_;
  FindingLog findings_;
};

TEST_F(ZlogContactTest, EveryFieldHasItsPlace) {
  const auto contacts = sample();
  ASSERT_EQ(contacts.size(), 20U);
  const std::vector<std::string> ft8 = {"APP_TOBARINE_ZLOG_CONTEST=ALL JA コンテスト",
                                        "APP_TOBARINE_ZLOG_CQ=Y",
                                        "APP_TOBARINE_ZLOG_MULTI1=07M",
                                        "APP_TOBARINE_ZLOG_NEW_MULTI1=Y",
                                        "APP_TOBARINE_ZLOG_PC=PC2",
                                        "APP_TOBARINE_ZLOG_POINTS=1",
                                        "APP_TOBARINE_ZLOG_POWER=M",
                                        "APP_TOBARINE_ZLOG_QSL=1",
                                        "APP_TOBARINE_ZLOG_RESERVE3=-1",
                                        "APP_TOBARINE_ZLOG_SERIAL=17",
                                        "APP_TOBARINE_ZLOG_TX=2",
                                        "BAND=40m",
                                        "CALL=JA7QBQ",
                                        "FREQ=7.0413",
                                        "MODE=FT8",
                                        "OPERATOR=JA1QAB",
                                        "QSO_DATE=20240428",
                                        "RST_RCVD=599",
                                        "RST_SENT=599",
                                        "SRX_STRING=07M",
                                        "STATION_CALLSIGN=JA1QAA",
                                        "STX_STRING=10M",
                                        "TIME_ON=115931",
                                        "TX_PWR=50"};
  EXPECT_EQ(fields_of(contacts[16]), ft8);
  EXPECT_EQ(contacts[17].get(Field::kSubmode), "FT4");
  EXPECT_EQ(contacts[17].get(Field::kFreq), "14.08");
  EXPECT_EQ(contacts[18].get("APP_TOBARINE_ZLOG_MODE"), "Other");
  EXPECT_EQ(contacts[19].get(Field::kFreq), "10368.1005");
  EXPECT_EQ(contacts[3].get(Field::kComment), "移動");
  EXPECT_EQ(contacts[3].origin.line, 5U);
  EXPECT_EQ(contacts[0].stated_zone(), Zone::kJst);
}

TEST_F(ZlogContactTest, ContactsKeepAllFieldsThroughALog) {
  const auto contacts = sample();
  for (const Zone zone : {Zone::kUtc, Zone::kJst}) {
    const auto read = through(contacts, ZloxWriter::Form::kZlox, zone);
    ASSERT_EQ(read.size(), contacts.size());
    for (std::size_t i = 0; i < read.size(); ++i) {
      EXPECT_EQ(fields_of(read[i]), fields_of(contacts[i]));
    }
    const auto shorter = through(contacts, ZloxWriter::Form::kZlo, zone);
    EXPECT_EQ(shorter[17].get(Field::kFreq), "14.08");  // from the memo
    EXPECT_EQ(shorter[0].get(Field::kFreq), "7.01");
  }
  EXPECT_EQ(findings_.count(FindingKind::kFieldNotHeld), 0U);
}

TEST_F(ZlogContactTest, WhatTheOperatorStruckOutIsLeftOutAndTold) {
  EXPECT_EQ(sample(Invalid::kLeaveOut).size(), 19U);
  ASSERT_EQ(findings_.kept().size(), 1U);
  EXPECT_EQ(findings_.kept()[0].kind, FindingKind::kLeftOutInvalid);
  EXPECT_EQ(findings_.kept()[0].call, "JA1QBS");
}

TEST_F(ZlogContactTest, OfOtherProgramsWhatFitsIsTakenAndTheRestTold) {
  Contact contact;
  contact.origin.line = 7;
  const std::pair<const char*, const char*> fields[] = {{"CALL", "W1AW"},
                                                        {"QSO_DATE", "20240427"},
                                                        {"TIME_ON", "1200"},
                                                        {"FREQ", "144.1234567"},
                                                        {"MODE", "SSB"},
                                                        {"SUBMODE", "USB"},
                                                        {"RST_SENT", "-12"},
                                                        {"RST_RCVD", "599"},
                                                        {"STX", "012"},
                                                        {"APP_N1MM_POINTS", "3"},
                                                        {"APP_N1MM_RADIO_NR", "1"},
                                                        {"APP_N1MM_EXCHANGE1", "CT"},
                                                        {"NAME", "Bob"},
                                                        {"APP_X_Y", "z"},
                                                        {"TX_PWR", "99.5"},
                                                        {"STATION_CALLSIGN", "JA1QAA"}};
  for (const auto& [name, value] : fields) contact.set(name, value);
  const auto read = through({contact}, ZloxWriter::Form::kZlox, Zone::kJst);
  ASSERT_EQ(read.size(), 1U);
  EXPECT_EQ(words(FindingKind::kFieldNotHeld),
            "SUBMODE「USB」、RST_SENT「-12」、TX_PWR「99.5」、NAME「Bob」、APP_X_Y「z」");
  EXPECT_EQ(words(FindingKind::kZlogFieldCut), "周波数");
  EXPECT_EQ(findings_.kept()[0].line, 7U);
  EXPECT_EQ(read[0].get(Field::kBand), "2m");
  EXPECT_EQ(read[0].get(Field::kStx), "012");
  EXPECT_EQ(read[0].get(Field::kSrxString), "CT");
  EXPECT_EQ(read[0].get("APP_TOBARINE_ZLOG_POINTS"), "3");
  EXPECT_EQ(read[0].get("APP_TOBARINE_ZLOG_TX"), "1");
  EXPECT_EQ(read[0].get(Field::kTimeOn), "120000");
  findings_ = {};
  contact.set("MODE", "MFSK");
  contact.set("SUBMODE", "FST4");
  through({contact}, ZloxWriter::Form::kZlox, Zone::kJst);
  EXPECT_EQ(words(FindingKind::kOtherMode), "FST4");
  EXPECT_TRUE(through({}, ZloxWriter::Form::kZlox, Zone::kUtc).empty());
}

TEST_F(ZlogContactTest, ALogHasOneHead) {
  auto contacts = sample();
  contacts[1].set(Field::kStationCallsign, "JA1ZZZ");
  through(contacts, ZloxWriter::Form::kZlox, Zone::kJst);
  ASSERT_EQ(findings_.kept().size(), 1U);
  EXPECT_EQ(findings_.kept()[0].call, "JA7QBB");
  EXPECT_EQ(findings_.kept()[0].text, "局「JA1ZZZ」");
}

TEST_F(ZlogContactTest, ACsvTakesWhatALogGives) {
  OutputFile file(folder_ / "out.csv");
  ZcsvSink sink(file, Zone::kUtc);
  for (const Contact& contact : sample()) sink.put(contact, findings_);
  sink.finish();
  file.close();
  ZlogSource source(ZcsvReader(folder_ / "out.csv"), {}, Invalid::kKeep);
  const auto read = all_of(source, findings_);
  ASSERT_EQ(read.size(), 20U);
  EXPECT_EQ(read[16].get(Field::kTimeOn), "115931");
  EXPECT_EQ(read[16].origin.line, 18U);
  ASSERT_EQ(findings_.kept().size(), 1U);  // the heads, told once
  EXPECT_EQ(findings_.kept()[0].text, "局「JA1QAA」、コンテスト「ALL JA コンテスト」");
}

TEST(ContestId, DependsOnTheModeWhereTheListDoes) {
  const struct {
    const char *contest, *mode, *id;
  } cases[] = {{"CQWW DX Contest", "CW", "CQ-WW-CW"},
               {"CQWW DX Contest", "FM", "CQ-WW-SSB"},
               {"CQWW DX Contest", "RTTY", "CQ-WW-RTTY"},
               {"JIDX Contest(JA)", "SSB", "JIDX-SSB"},
               {"JIDX Contest(JA)", "FT8", ""},
               {"IARU HF World Championship", "SSB", "IARU-HF"},
               {"cqww dx contest", "CW", ""},
               {"ALL JA コンテスト", "CW", ""}};
  for (const auto& c : cases) EXPECT_EQ(contest_id(c.contest, c.mode), c.id) << c.contest << c.mode;
}

TEST(ZlogBand, IsAdifsInAnyCase) {
  for (const std::string_view band : zlo::kBands) EXPECT_EQ(zlog_band(adif_band(band)), band);
  EXPECT_EQ(zlog_band("70CM"), "430");
  EXPECT_EQ(zlog_band("60m"), "");
  EXPECT_EQ(adif_band("60"), "");
}

}  // namespace
}  // namespace tobarine
