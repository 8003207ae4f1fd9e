#include "rules/moment.h"

#include <array>
#include <chrono>
#include <cstddef>

#include "text/strings.h"

namespace tobarine {
namespace {

using std::chrono::days;
using std::chrono::seconds;
using std::chrono::sys_days;
using std::chrono::sys_seconds;
using std::chrono::year_month_day;

constexpr std::int64_t kJstAhead = 9 * 3600;

// The digits of a text between optional separators; how many there are, 0 when anything else stands
// there or there are too many.
template <std::size_t N>
std::size_t take_digits(std::string_view text, std::string_view separators,
                        std::array<unsigned, N>& digits) {
  std::size_t count = 0;
  for (const char c : text) {
    if (separators.find(c) != std::string_view::npos) continue;
    if (count == N || !is_digit(c)) return 0;
    digits[count++] = static_cast<unsigned>(c - '0');
  }
  return count;
}

std::optional<sys_days> day_of(std::string_view date) {
  std::array<unsigned, 8> d{};
  if (take_digits(date, "/-", d) != d.size()) return std::nullopt;
  const auto year = static_cast<int>(d[0] * 1000 + d[1] * 100 + d[2] * 10 + d[3]);
  const year_month_day day{std::chrono::year(year), std::chrono::month(d[4] * 10 + d[5]),
                           std::chrono::day(d[6] * 10 + d[7])};
  if (!day.ok()) return std::nullopt;
  return sys_days(day);
}

void put_number(std::string& text, unsigned number, std::size_t width) {
  text.resize(text.size() + width);
  for (auto place = text.rbegin(); width > 0; --width, number /= 10) {
    *place++ = static_cast<char>('0' + number % 10);
  }
}

}  // namespace

std::optional<Moment> Moment::read(std::string_view date, std::string_view time, Zone zone) {
  const auto day = day_of(date);
  if (!day) return std::nullopt;
  const std::int64_t midnight = seconds(day->time_since_epoch()).count();
  if (time.empty()) return at(midnight, Precision::kDay, zone);
  std::array<unsigned, 6> t{};
  const std::size_t count = take_digits(time, ":", t);
  const unsigned hour = t[0] * 10 + t[1];
  const unsigned minute = t[2] * 10 + t[3];
  const unsigned second = t[4] * 10 + t[5];
  if ((count != 4 && count != 6) || hour > 23 || minute > 59 || second > 59) return std::nullopt;
  const std::int64_t ahead = zone == Zone::kJst ? kJstAhead : 0;
  return at(midnight + hour * 3600 + minute * 60 + second - ahead,
            count == 6 ? Precision::kSecond : Precision::kMinute, zone);
}

Moment Moment::at(std::int64_t utc_seconds, Precision precision, Zone stated_in) {
  Moment moment;
  moment.seconds_ = utc_seconds;
  moment.precision_ = precision;
  moment.stated_in_ = stated_in;
  return moment;
}

std::int64_t Moment::in(Zone zone) const {
  return zone == Zone::kJst && precision_ != Precision::kDay ? seconds_ + kJstAhead : seconds_;
}

std::string Moment::date(Zone zone) const {
  const sys_seconds moment{seconds(in(zone))};
  const year_month_day day(std::chrono::floor<days>(moment));
  std::string text;
  put_number(text, static_cast<unsigned>(static_cast<int>(day.year())), 4);
  put_number(text, static_cast<unsigned>(day.month()), 2);
  put_number(text, static_cast<unsigned>(day.day()), 2);
  return text;
}

std::string Moment::time(Zone zone) const {
  std::string text;
  if (precision_ == Precision::kDay) return text;
  const sys_seconds moment{seconds(in(zone))};
  const auto of_day = static_cast<unsigned>((moment - std::chrono::floor<days>(moment)).count());
  put_number(text, of_day / 3600, 2);
  put_number(text, of_day / 60 % 60, 2);
  if (precision_ == Precision::kSecond) put_number(text, of_day % 60, 2);
  return text;
}

bool is_calendar_day(std::string_view date) {
  return day_of(date).has_value();
}

}  // namespace tobarine
