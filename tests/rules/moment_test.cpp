#include "rules/moment.h"

#include <gtest/gtest.h>

namespace tobarine {
namespace {

TEST(Moment, ReadsDaysAndTimesOfTheCalendarOnly) {
  for (const auto& [date, time] : {std::pair{"20240229", "0000"},
                                   {"2024/02/29", "23:59"},
                                   {"2024-02-29", "235959"},
                                   {"19450101", ""}}) {
    EXPECT_TRUE(Moment::read(date, time, Zone::kUtc)) << date << ' ' << time;
  }
  for (const auto& [date, time] : {std::pair{"20230229", "0000"},
                                   {"20240230", ""},
                                   {"20241301", "0000"},
                                   {"2024022", "0000"},
                                   {"202402290", "0000"},
                                   {"", "0000"},
                                   {"20240229", "2400"},
                                   {"20240229", "0060"},
                                   {"20240229", "123"},
                                   {"20240229", "000060"},
                                   {"20240229", "12:3x"}}) {
    EXPECT_FALSE(Moment::read(date, time, Zone::kUtc)) << date << ' ' << time;
  }
  EXPECT_FALSE(is_calendar_day("20210431"));
}

TEST(Moment, ShiftsBetweenZonesWithItsPrecision) {
  const auto jst = Moment::read("20240301", "0859", Zone::kJst);
  EXPECT_EQ(jst->date() + jst->time(), "202402292359");
  EXPECT_EQ(jst->date(Zone::kJst) + jst->time(Zone::kJst), "202403010859");
  EXPECT_EQ(jst, Moment::read("20240229", "235900", Zone::kUtc));
  EXPECT_EQ(Moment::read("19991231", "150001", Zone::kUtc)->time(Zone::kJst), "000001");
  EXPECT_EQ(Moment::read("19991231", "150001", Zone::kUtc)->date(Zone::kJst), "20000101");

  const auto day = Moment::read("20240301", "", Zone::kJst);  // no time, so no shift
  EXPECT_EQ(day->date() + "," + day->time() + "," + day->date(Zone::kJst), "20240301,,20240301");
  EXPECT_EQ(Moment::read("19691231", "2359", Zone::kUtc)->utc_seconds(), -60);
}

}  // namespace
}  // namespace tobarine
