#include "hamlog/l2h_rules.h"

#include <algorithm>
#include <iterator>

#include "rules/japanese_call.h"
#include "text/strings.h"
#include "text/utf8.h"

namespace tobarine {
namespace {

enum Column : std::size_t {
  kCall,
  kDate,
  kTime,
  kHisRst,
  kMyRst,
  kFreq,
  kMode,
  kCode,
  kGrid,
  kQsl,
  kName,
  kQth,
  kRmks1,
  kRmks2,
  kDxFlag,
};

constexpr unsigned kJapan = 339;
constexpr unsigned kIslandsOfJapan[] = {177, 192};  // entities of their own with Japanese codes

// Of a call with a slash the longer of the first two pieces, the second when they are equally long.
std::string_view working_call(std::string_view call) {
  const std::size_t slash = call.find('/');
  if (slash == std::string_view::npos) return call;
  const std::string_view first = call.substr(0, slash);
  const std::string_view rest = call.substr(slash + 1);
  const std::string_view second = rest.substr(0, rest.find('/'));
  return char_count(first) > char_count(second) ? first : second;
}

// The number of a contest exchange, without its power letter.
void without_power_letters(std::string_view jcc, std::string& code) {
  code.clear();
  for (const char c : jcc) {
    if (c != 'H' && c != 'M' && c != 'L' && c != 'P') code += c;
  }
}

// A band that the fixed frequencies do not have, or give in GHz as if it were MHz.
bool loses_band(const QsoRecord& r) {
  if (is_blank(r.band)) return false;
  constexpr double kLowestMillimetreBand = 47000;  // MHz
  const bool millimetres = upper(trim(r.band)).ends_with("MM");
  return is_blank(r.freq) ||
         (millimetres && !contains(r.freq, "G") && leading_number(r.freq) < kLowestMillimetreBand);
}

}  // namespace

void L2hRules::apply(const QsoRecord& r, std::size_t line, HamlogColumns& columns,
                     FindingLog& findings) {
  const std::string_view working = working_call(r.call);
  const bool japanese = is_japanese_call(working);
  columns[kCall] = r.call;
  columns[kHisRst] = r.his_rst;
  columns[kMyRst] = r.my_rst;
  columns[kFreq] = r.freq;
  if (loses_band(r)) findings.add(FindingKind::kBandLost, line, r.call, r.band + " " + r.freq);
  columns[kMode] = r.mode;
  columns[kGrid] = r.grid;
  qsl_ = r.qsl;
  if (!is_blank(r.qsl_via) && qsl_[0] == 'J') qsl_[0] = 'M';
  columns[kQsl] = qsl_;
  columns[kName] = r.name;
  columns[kRmks1] = r.rmks1;
  columns[kRmks2] = r.rmks2;
  set_code_and_qth(r, working, japanese, line, columns, findings);
  if (write_qth_ && !is_blank(r.qth)) columns[kQth] = r.qth;
  set_date_and_time(r, japanese, line, columns, findings);
  columns[kDxFlag] = state_.dx_flag;
}

void L2hRules::set_code_and_qth(const QsoRecord& r, std::string_view working, bool japanese,
                                std::size_t line, HamlogColumns& columns, FindingLog& findings) {
  const bool jcc_given = !is_blank(r.jcc);
  const bool jcg_given = !is_blank(r.jcg);
  const unsigned dxcc = is_blank(r.dxcc) ? 0 : dxcc_number(r.dxcc);
  const auto disagrees = [&](std::string_view taken_as) {
    findings.add(FindingKind::kDxccDisagrees, line, r.call,
                 "DXCC " + std::to_string(dxcc) + "、" + std::string(taken_as));
  };
  columns[kCode] = columns[kQth] = {};
  if (!japanese) {
    const bool by_number = !is_blank(r.dxcc) && dxcc != kJapan && !jcc_given && !jcg_given;
    if (by_number) {
      set_foreign(r, dxcc, line, columns, findings);
      return;
    }
    const CallPlace place = tables_.calls.find(working, r.qso_date);
    const unsigned found = place.entity == nullptr ? 0 : place.entity->number;
    if (dxcc == kJapan || (dxcc != 0 && found != dxcc)) disagrees("コールから国外局とした");
    set_foreign(r, found, line, columns, findings);
    return;
  }
  const bool island = std::ranges::find(kIslandsOfJapan, dxcc) != std::end(kIslandsOfJapan);
  if (dxcc != 0 && dxcc != kJapan && !(island && (jcc_given || jcg_given))) {
    disagrees("コールから国内局とした");
  }
  code_ = jcg_given ? r.jcg : "";
  if (jcc_given) without_power_letters(r.jcc, code_);
  if (is_blank(code_)) {
    columns[kCode] = "500A";
    columns[kQth] = "Japan";
  } else if (const JccPlace* place = tables_.jcc.find(code_)) {
    columns[kCode] = place->number;
    columns[kQth] = place->name;
  } else {
    columns[kCode] = code_;
    findings.add(FindingKind::kUnknownJcc, line, r.call, code_);
  }
}

void L2hRules::set_foreign(const QsoRecord& r, unsigned dxcc, std::size_t line,
                           HamlogColumns& columns, FindingLog& findings) const {
  const CodeRow* row = tables_.codes.find(dxcc);
  if (row == nullptr) {
    findings.add(FindingKind::kUnknownEntity, line, r.call, r.dxcc);
    return;
  }
  columns[kCode] = row->code;
  columns[kQth] = row->text;
  if (row->code.empty()) findings.add(FindingKind::kNoHamlogCode, line, r.call, row->text);
}

void L2hRules::set_date_and_time(const QsoRecord& r, bool japanese, std::size_t line,
                                 HamlogColumns& columns, FindingLog& findings) {
  const bool all = time_mode_ == TimeMode::kAllJst || time_mode_ == TimeMode::kAllJstFromAdif;
  const bool by_station = time_mode_ == TimeMode::kJapaneseToJst;
  // Not cleared between contacts and runs: a mode that does not set it repeats the last value.
  if (all || by_station) state_.dx_flag = japanese ? "0" : "8";
  if (is_blank(r.qso_date)) {
    date_ = "//";
  } else {
    date_ = mid_chars(r.date, 2, r.date.size());
  }
  time_.assign(left_chars(r.time, 5)).append("U");
  if (all || (by_station && japanese)) {
    if (const auto jst = shift_utc_to_jst(r.date, r.time)) {
      const std::string_view d = jst->date;
      const std::string_view t = jst->time;
      date_.assign(d.substr(0, 2)).append("/").append(d.substr(2, 2)).append("/");
      date_.append(d.substr(4, 2));
      time_.assign(t.substr(0, 2)).append(":").append(t.substr(2));
    }
  }
  if (date_ != "//" && !is_date_and_time(r.date, r.time)) {
    const bool no_such_day =
        r.qso_date.size() == 8 && all_digits(r.qso_date) && !is_date_and_time(r.date, "0000");
    findings.add(no_such_day ? FindingKind::kImpossibleDay : FindingKind::kBadDateOrTime, line,
                 r.call, r.qso_date + " " + r.time_on);
  }
  columns[kDate] = date_;
  columns[kTime] = time_;
}

}  // namespace tobarine
