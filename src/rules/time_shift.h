// Date and time between Japan Standard Time and UTC (JST = UTC + 9 hours), and the user's choice of
// what is shifted.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tobarine {

struct DateTime {
  std::string date;
  std::string time;
};

// Forms taken: date yyyymmdd ("/" between the parts is allowed), time hhmm with or without ":" and
// with anything behind it. Nothing comes back when that is no calendar date or time of day.
//
// JST to UTC gives yyyymmdd and hhmm + "U"; UTC to JST gives yymmdd (Hamlog's two-digit year, on
// purpose) and hhmm + "J".
std::optional<DateTime> shift_jst_to_utc(std::string_view date, std::string_view time);
std::optional<DateTime> shift_utc_to_jst(std::string_view date, std::string_view time);

// UTC to JST as above, with the four-digit year: yyyymmdd.
std::optional<DateTime> shift_utc_to_jst_full_year(std::string_view date, std::string_view time);

// True when the shifts would take them.
bool is_date_and_time(std::string_view date, std::string_view time);

// What is shifted. In the Hamlog-to-ADIF direction only kAllUtc acts; the others act when ADIF
// becomes Hamlog CSV.
enum class TimeMode { kNone, kAllJst, kAllJstFromAdif, kAllUtc, kJapaneseToJst };

// The mode of an option button (0 .. 3); `from_adif`: the input is ADIF.
TimeMode set_time_mode(int option_index, bool from_adif);

std::string_view time_mode_keyword(TimeMode mode);  // "None", "ALL_J", "ALL_J_adi", ...

struct TimeModeExplanation {
  std::string_view first_line;
  std::string_view second_line;
};
TimeModeExplanation explain_time_mode(TimeMode mode);

}  // namespace tobarine
