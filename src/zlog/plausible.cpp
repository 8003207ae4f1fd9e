#include "zlog/plausible.h"

#include <algorithm>

#include "rules/band.h"
#include "rules/time_shift.h"
#include "text/strings.h"

namespace tobarine {
namespace {

// The years that two digits can name.
constexpr std::string_view kFirstYear = "1931";
constexpr std::string_view kLastYear = "2030";

bool is_letter(char c) {
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

bool looks_like_date(std::string_view date) {
  if (date.size() != 10 || date[4] != '/' || date[7] != '/') return false;
  const std::string_view year = date.substr(0, 4);
  return year >= kFirstYear && year <= kLastYear && is_date_and_time(date, "0000");
}

bool looks_like_time(std::string_view time) {
  const bool hhmm = time.size() == 4 && all_digits(time);
  const bool with_colon = time.size() == 5 && time[2] == ':';
  return (hhmm || with_colon) && is_date_and_time("20000101", time);
}

bool looks_like_band(std::string_view band) {
  return band == "10G" || !band_from_freq(band).empty();
}

}  // namespace

bool looks_like_call(std::string_view call) {
  const auto fits = [](char c) { return is_letter(c) || is_digit(c) || c == '/'; };
  return call.size() >= 3 && std::ranges::all_of(call, fits) &&
         std::ranges::any_of(call, is_digit) && std::ranges::any_of(call, is_letter);
}

std::string odd_fields(const ZlogContact& contact) {
  std::string odd = contact.oddity;
  const auto check = [&odd](bool well, std::string_view what, std::string_view value) {
    if (well) return;
    odd.append(odd.empty() ? "" : "、").append(what).append("「").append(value).append("」");
  };
  check(looks_like_date(contact.date), "日付", contact.date);
  check(looks_like_time(contact.time), "時刻", contact.time);
  check(looks_like_call(contact.call), "コール", contact.call);
  check(looks_like_band(contact.band), "バンド", contact.band);
  return odd;
}

}  // namespace tobarine
