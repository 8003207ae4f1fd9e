// Hamlog's database through stand-in libraries.
#include "hamlog/hdb_reader.h"

#include <cstring>
#include <gtest/gtest.h>
#include <set>

#include "convert/h2l.h"
#include "hamlog/stand_in_library.h"
#include "tables.h"
#include "test_folder.h"
#include "text/error.h"
#include "text/strings.h"

namespace tobarine {
namespace {

std::vector<std::string> contact(const std::string& call, const std::string& qth = "横浜市") {
  return {call,   "24/05/01", "21:05J", "59",   "57", "7.025 ", "SSB",
          "1101", "PM95",     "J",      "太郎", qth,  "",       "メモ"};
}

class Hdb : public ::testing::Test {
 protected:
  ConversionReport convert() {
    H2lJob job;
    job.input = folder_.file("Hamlog.hdb", "opaque");
    job.output = folder_ / "out.adi";
    job.source = H2lSource::kHamlogHdb;
    job.library = &library_;
    return run_h2l(job, delivered<ConversionTables>(), delivered<CallTables>(), {});
  }
  std::string adif() { return from_cp932(TestFolder::bytes_of(folder_ / "out.adi")); }

  TestFolder folder_;
  StandInLibrary library_;
};

TEST_F(Hdb, FieldsBecomeTheColumnsOfAContact) {
  library_.records = {contact("JA1ABC")};
  HdbReader reader(folder_.file("Hamlog.hdb", ""), library_);
  QsoRecord record;
  FindingLog findings;
  ASSERT_TRUE(reader.next(record, findings));
  EXPECT_EQ(record.call, "JA1ABC");
  EXPECT_EQ(record.qso_date, "20240501");
  EXPECT_EQ(record.time_on, "2105J");
  EXPECT_EQ(record.freq, "7.025");
  EXPECT_EQ(record.qsl, "J  ");
  EXPECT_EQ(record.qth, "横浜市");
  EXPECT_EQ(record.rmks2, "メモ");
  EXPECT_FALSE(reader.next(record, findings));
  EXPECT_TRUE(library_.path.ends_with("Hamlog.hdb"));
}

TEST_F(Hdb, ConvertsAndClosesWhatItOpened) {
  library_.records = {contact("JA1ABC"), contact("W1AW")};
  const ConversionReport report = convert();
  EXPECT_EQ(report.read, 2U);
  EXPECT_EQ(report.written, 2U);
  EXPECT_TRUE(contains(adif(), "<CALL:6>JA1ABC <QSO_DATE:8:d>20240501 <TIME_ON:4>1205 "));
  EXPECT_EQ(library_.open_handles, 0);
}

TEST_F(Hdb, AnEmptyDatabaseGivesTheHeaderOnly) {
  EXPECT_EQ(count_hamlog_hdb(folder_ / "x.hdb", library_), 0U);
  EXPECT_EQ(convert().written, 0U);
  EXPECT_TRUE(adif().ends_with("<EOH>\r\n\r\n"));
}

TEST_F(Hdb, AFieldThatFillsItsWholeBufferKeepsItsLength) {
  library_.records = {contact("JA1ABC", std::string(kHamlogTextSize, 'q'))};
  HdbReader reader(folder_ / "x.hdb", library_);
  QsoRecord record;
  FindingLog findings;
  ASSERT_TRUE(reader.next(record, findings));
  EXPECT_EQ(record.qth.size(), kHamlogTextSize);
}

TEST_F(Hdb, RecordsThatCannotBeReadAreReportedAndThreeInARowEndTheRun) {
  for (int i = 0; i < 10; ++i)
    library_.records.push_back(contact("JA" + std::to_string(i) + "ABC"));
  library_.unreadable = {1, 2, 4};
  ConversionReport report = convert();
  EXPECT_EQ(report.written, 7U);
  EXPECT_FALSE(report.stopped_by);
  EXPECT_TRUE(report.in_records);
  ASSERT_EQ(report.findings.count(FindingKind::kUnreadRecord), 3U);
  EXPECT_EQ(report.findings.kept()[2].text, "状態 7: 読めない");
  library_.unreadable = {4, 5, 6};
  report = convert();
  EXPECT_EQ(report.written, 3U);
  EXPECT_TRUE(report.stopped_by && contains(*report.stopped_by, "6 行目"));
  EXPECT_EQ(library_.open_handles, 0);
}

TEST_F(Hdb, WhatCannotBeOpenedIsToldWithItsStatus) {
  library_.open_status = 5;
  try {
    convert();
    FAIL();
  } catch (const FileError& error) {
    EXPECT_TRUE(contains(error.what(), "状態 5: 開けない"));
  }
  library_.open_status = 1;  // a success, too
  EXPECT_EQ(convert().written, 0U);
  EXPECT_THROW(HdbReader(folder_ / "\U0001F600.hdb", library_), FileError);
  EXPECT_EQ(library_.open_handles, 0);
}

}  // namespace
}  // namespace tobarine
