#include "rules/time_shift.h"

#include <array>
#include <chrono>
#include <cstddef>

#include "text/strings.h"

namespace tobarine {
namespace {

using std::chrono::days;
using std::chrono::hours;
using std::chrono::minutes;
using std::chrono::sys_days;
using std::chrono::year_month_day;
using Moment = std::chrono::sys_time<minutes>;

constexpr hours kJstAhead{9};

// The digits left when every `separator` is taken out, at most N; `more` tells of characters
// behind.
template <std::size_t N>
bool take_digits(std::string_view text, char separator, bool more_allowed,
                 std::array<unsigned, N>& digits) {
  std::size_t count = 0;
  for (const char c : text) {
    if (c == separator) continue;
    if (count == N) return more_allowed;
    if (!is_digit(c)) return false;
    digits[count++] = static_cast<unsigned>(c - '0');
  }
  return count == N;
}

std::optional<Moment> parse(std::string_view date, std::string_view time) {
  std::array<unsigned, 8> d{};
  std::array<unsigned, 4> t{};
  if (!take_digits(date, '/', false, d) || !take_digits(time, ':', true, t)) return std::nullopt;
  const int year = static_cast<int>(d[0] * 1000 + d[1] * 100 + d[2] * 10 + d[3]);
  const year_month_day day{std::chrono::year(year), std::chrono::month(d[4] * 10 + d[5]),
                           std::chrono::day(d[6] * 10 + d[7])};
  const unsigned hour = t[0] * 10 + t[1];
  const unsigned minute = t[2] * 10 + t[3];
  if (!day.ok() || hour > 23 || minute > 59) return std::nullopt;
  return sys_days(day) + hours(hour) + minutes(minute);
}

char* put_two(unsigned number, char* out) {
  *out++ = static_cast<char>('0' + number / 10 % 10);
  *out++ = static_cast<char>('0' + number % 10);
  return out;
}

DateTime format(Moment moment, bool four_digit_year, char zone) {
  const auto midnight = std::chrono::floor<days>(moment);
  const year_month_day day(midnight);
  const auto of_day = static_cast<unsigned>((moment - midnight).count());
  const auto year = static_cast<unsigned>(static_cast<int>(day.year()));
  std::array<char, 8> date{};
  char* end = date.data();
  if (four_digit_year) end = put_two(year / 100, end);
  end = put_two(year, end);
  end = put_two(static_cast<unsigned>(day.month()), end);
  end = put_two(static_cast<unsigned>(day.day()), end);
  std::array<char, 5> time{};
  *put_two(of_day % 60, put_two(of_day / 60, time.data())) = zone;
  return {std::string(date.data(), end), std::string(time.data(), time.size())};
}

struct ModeText {
  TimeMode mode;
  std::string_view keyword;
  TimeModeExplanation explanation;
};

constexpr ModeText kModes[] = {
    {TimeMode::kNone, "None", {"時刻の変換はしません", ""}},
    {TimeMode::kAllJst, "ALL_J", {"UTC + 9 --> JST", "ADIF は UTC が一般的"}},
    {TimeMode::kAllJstFromAdif, "ALL_J_adi", {"UTC + 9 --> JST", "全てを JST に変換"}},
    {TimeMode::kAllUtc, "ALL_U", {"JST - 9  --> UTC", "全てを UTC に変換"}},
    {TimeMode::kJapaneseToJst, "J_2_U", {"UTC + 9 --> JST", "JA 局のみ JST に変換"}},
};

const ModeText& text_of(TimeMode mode) {
  return kModes[static_cast<std::size_t>(mode)];
}

}  // namespace

std::optional<DateTime> shift_jst_to_utc(std::string_view date, std::string_view time) {
  const std::optional<Moment> moment = parse(date, time);
  if (!moment) return std::nullopt;
  return format(*moment - kJstAhead, true, 'U');
}

std::optional<DateTime> shift_utc_to_jst(std::string_view date, std::string_view time) {
  const std::optional<Moment> moment = parse(date, time);
  if (!moment) return std::nullopt;
  return format(*moment + kJstAhead, false, 'J');
}

std::optional<DateTime> shift_utc_to_jst_full_year(std::string_view date, std::string_view time) {
  const std::optional<Moment> moment = parse(date, time);
  if (!moment) return std::nullopt;
  return format(*moment + kJstAhead, true, 'J');
}

bool is_date_and_time(std::string_view date, std::string_view time) {
  return parse(date, time).has_value();
}

TimeMode set_time_mode(int option_index, bool from_adif) {
  switch (option_index) {
    case 1:
      return from_adif ? TimeMode::kAllJstFromAdif : TimeMode::kAllJst;
    case 2:
      return TimeMode::kAllUtc;
    case 3:
      return TimeMode::kJapaneseToJst;
    default:
      return TimeMode::kNone;
  }
}

std::string_view time_mode_keyword(TimeMode mode) {
  return text_of(mode).keyword;
}
TimeModeExplanation explain_time_mode(TimeMode mode) {
  return text_of(mode).explanation;
}

}  // namespace tobarine
