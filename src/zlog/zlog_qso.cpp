#include "zlog/zlog_qso.h"

#include <algorithm>

#include "text/strings.h"
#include "zlog/plausible.h"
#include "zlog/zlo_record.h"

namespace tobarine {

void note_odd(ZlogQso& qso, std::string_view what, std::string_view value) {
  qso.oddity.append(qso.oddity.empty() ? "" : "、").append(what);
  qso.oddity.append("「").append(value).append("」");
}

std::string odd_fields(const ZlogQso& qso) {
  std::string odd = qso.oddity;
  const auto check = [&odd](bool well, std::string_view what) {
    if (!well) odd.append(odd.empty() ? "" : "、").append(what);
  };
  check(qso.moment.has_value(), "日時が無い");
  check(looks_like_call(qso.call), "コール「" + qso.call + "」");
  return odd;
}

namespace {

// Every time of these years has a date of four-digit year in each zone.
constexpr std::int64_t kYear1900 = -2208988800;  // seconds from 1970
constexpr std::int64_t kLastDayOf9999 = 253402214400;

bool has_time(const ZlogQso& qso) {
  return qso.moment && qso.moment->precision() != Moment::Precision::kDay &&
         qso.moment->utc_seconds() >= kYear1900 && qso.moment->utc_seconds() < kLastDayOf9999;
}

}  // namespace

bool fits_zlog(const ZlogQso& qso, std::size_t number, FindingLog& findings) {
  if (!has_time(qso) || qso.call.empty()) {
    findings.add(FindingKind::kNoDateOrCall, number, qso.call, "");
    return false;
  }
  if (std::ranges::find(zlo::kBands, qso.band) != zlo::kBands.end()) return true;
  findings.add(FindingKind::kNoZlogBand, number, qso.call,
               qso.band.empty() ? qso.freq_khz : qso.band);
  return false;
}

bool is_decimal(std::string_view text) {
  const auto fits = [](char c) { return is_digit(c) || c == '.'; };
  return std::ranges::all_of(text, fits) && std::ranges::any_of(text, is_digit) &&
         std::ranges::count(text, '.') <= 1;
}

std::string_view freq_in_memo(std::string_view memo) {
  const std::size_t open = memo.find('(');
  if (open == std::string_view::npos) return {};
  const std::size_t close = memo.find(')', open);
  if (close == std::string_view::npos) return {};
  const std::string_view khz = trim(memo.substr(open + 1, close - open - 1));
  return is_decimal(khz) && leading_number(khz) > 0 ? khz : std::string_view();
}

}  // namespace tobarine
