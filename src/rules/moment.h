// When a contact was: a day and, where known, the time of day, read once and kept as a number.
#pragma once

#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tobarine {

enum class Zone : std::uint8_t { kUtc, kJst };  // JST = UTC + 9 hours

class Moment {
 public:
  enum class Precision : std::uint8_t { kDay, kMinute, kSecond };

  // `date`: yyyymmdd or with "/" or "-" between the parts. `time`: hhmm or hhmmss, with or without
  // ":" between; empty: the day alone is known, and stays the day of its zone. Nothing comes back
  // when that is no calendar day or time of day.
  static std::optional<Moment> read(std::string_view date, std::string_view time, Zone zone);

  // From seconds since 1970-01-01 00:00 UTC.
  static Moment at(std::int64_t utc_seconds, Precision precision, Zone stated_in);

  std::int64_t utc_seconds() const { return seconds_; }  // midnight when the day alone is known
  Precision precision() const { return precision_; }
  Zone stated_in() const { return stated_in_; }  // the zone that the log gave it in

  // "yyyymmdd", and "hhmm" or "hhmmss" (empty when the day alone is known), in a zone.
  std::string date(Zone zone = Zone::kUtc) const;
  std::string time(Zone zone = Zone::kUtc) const;

  bool operator==(const Moment& other) const { return seconds_ == other.seconds_; }
  auto operator<=>(const Moment& other) const { return seconds_ <=> other.seconds_; }

 private:
  std::int64_t in(Zone zone) const;

  std::int64_t seconds_ = 0;
  Precision precision_ = Precision::kMinute;
  Zone stated_in_ = Zone::kUtc;
};

// Whether it is a day of the calendar: yyyymmdd, "/" or "-" between the parts allowed.
bool is_calendar_day(std::string_view date);

}  // namespace tobarine
