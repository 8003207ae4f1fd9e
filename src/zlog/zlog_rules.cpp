#include "zlog/zlog_rules.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "rules/band.h"
#include "rules/time_shift.h"
#include "text/cp932.h"
#include "text/strings.h"
#include "text/utf8.h"
#include "zlog/zlo_record.h"
#include "zlog/zlog_band.h"

namespace tobarine {
namespace {

// The frequency in whole kHz, if zLog's readers can take it: four or five digits.
std::string khz_of(std::string_view mhz) {
  constexpr std::size_t kDecimals = 3;
  const std::size_t point = std::min(mhz.find('.'), mhz.size());
  std::string khz(mhz.substr(0, point));
  std::string decimals(mhz.substr(std::min(point + 1, mhz.size()), kDecimals));
  khz += decimals.append(kDecimals - decimals.size(), '0');
  khz.erase(0, khz.find_first_not_of('0'));
  const bool taken = all_digits(khz) && (khz.size() == 4 || khz.size() == 5);
  return taken ? khz : std::string();
}

bool has_part_of_khz(std::string_view mhz) {
  const std::size_t point = std::min(mhz.find('.'), mhz.size());
  const std::string_view below = mhz.substr(std::min(point + 4, mhz.size()));
  return below.find_first_not_of('0') != std::string_view::npos;
}

ZlogMoment moment_of(const QsoRecord& r, bool to_jst) {
  if (!to_jst) return {r.date, r.time};
  const auto jst = shift_utc_to_jst_full_year(r.date, r.time);
  if (!jst) return {r.date, r.time};
  const std::string& d = jst->date;
  const std::string& t = jst->time;
  return {d.substr(0, 4) + "/" + d.substr(4, 2) + "/" + d.substr(6),
          t.substr(0, 2) + ":" + t.substr(2, 2)};
}

std::string serial_text(unsigned serial) {
  const std::string text = std::to_string(serial);
  return text.size() < 3 ? std::string(3 - text.size(), '0') + text : text;
}

unsigned whole_number(std::string_view text) {
  constexpr double kMost = 1e9;
  return static_cast<unsigned>(std::nearbyint(std::min(leading_number(text), kMost)));
}

// What does not fit into the columns and areas, in words; empty when all does.
std::string cut_values(const ZlogEntry& e) {
  std::string cut;
  const auto check = [&cut](bool fits, std::string_view what, std::string_view value) {
    if (fits) return;
    cut.append(cut.empty() ? "" : "、").append(what).append("「").append(value).append("」");
  };
  check(char_count(e.call) <= 11, "コール", e.call);
  check(char_count(e.sent_number) <= 7, "送信番号", e.sent_number);
  check(char_count(e.received_number) <= 7, "受信番号", e.received_number);
  for (const std::string* rst : {&e.his_rst, &e.my_rst}) {
    check(rst->empty() || (rst->size() <= 3 && all_digits(*rst)), "RST", *rst);
  }
  if (e.operator_name) {
    check(cp932_length(*e.operator_name) <= zlo::kOperator.size, "オペレーター", *e.operator_name);
  }
  check(cp932_length(e.khz) + cp932_length(e.notes) + 3 <= zlo::kMemo.size, "メモ", e.notes);
  check(e.zlo_moment.date >= zlo::kFirstDate && e.zlo_moment.date <= zlo::kLastDate, "日付",
        e.zlo_moment.date);
  return cut;
}

}  // namespace

std::string age_text(const QsoRecord& r) {
  const std::string_view age = trim(r.age);
  return age.empty() ? std::string() : "AGE:" + std::string(age);
}

unsigned tx_number(const QsoRecord& r) {
  return whole_number(r.n1mm_radio_nr);
}

// False: a number cannot be stored.
bool ZlogRules::set_numbers(const QsoRecord& r, ZlogEntry& entry) {
  const auto fits = [this](unsigned number, const char* what) {
    if (zlo::stored_byte(number)) return true;
    refusal_ = what + (" " + std::to_string(number)) + " は .zlo に書けません";
    return false;
  };
  entry.points = whole_number(r.n1mm_points);
  entry.tx_number.reset();
  if (options_.write_tx_number) entry.tx_number = tx_number(r);
  if (!fits(entry.points, "得点") || !fits(entry.tx_number.value_or(0), "TX#")) return false;
  entry.sent_number = is_blank(r.stx) ? options_.sent_number : r.stx;
  entry.serial = 0;
  if (options_.running_number) {
    entry.serial = ++serial_;
    entry.sent_number = serial_text(serial_);
  }
  std::string& received = entry.received_number;
  received = trim(!is_blank(r.n1mm_exchange1) ? r.n1mm_exchange1
                  : !is_blank(r.srx)          ? r.srx
                                              : r.section);
  const bool has_letter =
      !received.empty() && contains("HMLP", received.substr(received.size() - 1));
  if (options_.drop_power_letter && has_letter) received.pop_back();
  return true;
}

void ZlogRules::set_moments(const QsoRecord& r, ZlogEntry& entry) const {
  entry.all_moment = moment_of(r, options_.all_to_jst);
  entry.zlo_moment = moment_of(r, options_.zlo_to_jst);
}

void ZlogRules::set_mode(const QsoRecord& r, std::size_t line, ZlogEntry& entry,
                         FindingLog& findings) const {
  const std::string mode = upper(trim(r.adif_mode));
  if (mode == "USB" || mode == "LSB") {
    entry.mode = "SSB";
  } else if (std::ranges::find(zlo::kModes, std::string_view(mode)) != zlo::kModes.end()) {
    entry.mode = mode;
  } else {
    entry.mode = zlo::kModes.back();
    findings.add(FindingKind::kOtherMode, line, r.call, r.adif_mode);
  }
}

void ZlogRules::set_memo(const QsoRecord& r, ZlogEntry& entry) const {
  entry.notes.clear();
  const auto note = [&entry](std::string_view text) {
    if (!text.empty()) entry.notes.append(entry.notes.empty() ? "" : " ").append(text);
  };
  if (options_.write_comment) note(trim(r.comment));
  if (options_.write_age) note(age_text(r));
  if (options_.write_iota) note(trim(r.iota));
  entry.operator_name.reset();
  if (options_.write_operator) entry.operator_name = trim(r.operator_call);
}

void ZlogRules::set_khz(const QsoRecord& r, std::size_t line, ZlogEntry& entry,
                        FindingLog& findings) {
  entry.khz = khz_of(r.adif_freq);
  const std::string_view by_freq = band_from_freq(r.adif_freq);
  if (!by_freq.empty() && zlog_band(by_freq) != entry.band) {
    findings.add(FindingKind::kFreqOffBand, line, r.call,
                 r.adif_freq + " (バンド " + entry.band + ")");
    entry.khz.clear();
  } else if (!entry.khz.empty()) {
    if (has_part_of_khz(r.adif_freq)) ++cut_freqs_;
  } else if (leading_number(r.adif_freq) > 0) {
    findings.add(FindingKind::kZlogFreqDropped, line, r.call, r.adif_freq);
  }
  // Other parentheses must not be taken for a frequency.
  const bool others =
      contains(entry.notes, "(") || (entry.operator_name && contains(*entry.operator_name, "("));
  if (entry.khz.empty() && others) entry.khz = "0";
}

ZlogRules::Fate ZlogRules::apply(const QsoRecord& r, std::size_t line, ZlogEntry& entry,
                                 FindingLog& findings) {
  entry.band = zlog_band(trim(r.band));
  if (entry.band.empty()) {
    findings.add(FindingKind::kNoZlogBand, line, r.call, is_blank(r.band) ? r.adif_freq : r.band);
    return Fate::kLeftOut;
  }
  if (!is_date_and_time(r.date, r.time)) {
    refusal_ = "日付と時刻を読めません: 「" + r.qso_date + " " + r.time_on + "」";
    return Fate::kRefused;
  }
  if (!set_numbers(r, entry)) return Fate::kRefused;
  entry.call = trim(r.call);
  entry.his_rst = trim(r.his_rst);
  entry.my_rst = trim(r.my_rst);
  set_moments(r, entry);
  set_mode(r, line, entry, findings);
  set_memo(r, entry);
  set_khz(r, line, entry, findings);
  if (const std::string cut = cut_values(entry); !cut.empty()) {
    findings.add(FindingKind::kZlogFieldCut, line, entry.call, cut);
  }
  return Fate::kWrite;
}

}  // namespace tobarine
