#include "rules/time_shift.h"

#include <gtest/gtest.h>

#include "rules/japanese_call.h"

namespace tobarine {
namespace {

std::string to_utc(const char* date, const char* time) {
  const auto r = shift_jst_to_utc(date, time);
  return r ? r->date + " " + r->time : "-";
}

std::string to_jst(const char* date, const char* time) {
  const auto r = shift_utc_to_jst(date, time);
  return r ? r->date + " " + r->time : "-";
}

TEST(TimeShift, RollsOverDaysMonthsYearsAndLeapDays) {
  EXPECT_EQ(to_utc("20240301", "0500J"), "20240229 2000U");
  EXPECT_EQ(to_utc("20230301", "0859"), "20230228 2359U");
  EXPECT_EQ(to_utc("20240101", "03:05J"), "20231231 1805U");
  EXPECT_EQ(to_utc("2024/01/01", "0900J"), "20240101 0000U");
  EXPECT_EQ(to_jst("20231231", "2000"), "240101 0500J");
  EXPECT_EQ(to_jst("20000228", "1500U"), "000229 0000J");
  EXPECT_EQ(to_jst("19991231", "1459"), "991231 2359J");
}

TEST(TimeShift, WhatIsNoDateOrTimeIsNotShifted) {
  for (const char* date :
       {"", "20240230", "20241301", "2024115", "20241/15", "202401011", "2024xx01"}) {
    EXPECT_EQ(to_utc(date, "1200J"), "-") << date;
  }
  for (const char* time : {"", "2400J", "1260J", "930J", "12", "12:0xJ"}) {
    EXPECT_EQ(to_utc("20240101", time), "-") << time;
  }
}

TEST(TimeMode, FollowsTheOptionAndTheInput) {
  EXPECT_EQ(time_mode_keyword(set_time_mode(0, true)), "None");
  EXPECT_EQ(time_mode_keyword(set_time_mode(1, false)), "ALL_J");
  EXPECT_EQ(time_mode_keyword(set_time_mode(1, true)), "ALL_J_adi");
  EXPECT_EQ(time_mode_keyword(set_time_mode(2, false)), "ALL_U");
  EXPECT_EQ(time_mode_keyword(set_time_mode(3, true)), "J_2_U");
  EXPECT_EQ(explain_time_mode(set_time_mode(2, false)).first_line, "JST - 9  --> UTC");
}

TEST(JapaneseCall, NeedsSeriesAndDigit) {
  for (const char* call : {"JA1ABC", "JS3XYZ", "7K1ABC", "8N2ABC", "7J1", "JA1"}) {
    EXPECT_TRUE(is_japanese_call(call)) << call;
  }
  for (const char* call : {"JT1ABC", "7A1ABC", "JAA1", "ja1abc", "8O1A", "JA", "", "9J2AA"}) {
    EXPECT_FALSE(is_japanese_call(call)) << call;
  }
}

}  // namespace
}  // namespace tobarine
