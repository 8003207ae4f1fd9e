#include "zlog/zlog_contact.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <variant>

#include "log/frequency.h"
#include "log/mode.h"
#include "text/strings.h"
#include "zlog/contest_id.h"
#include "zlog/zlog_band.h"
#include "zlog/zlox_record.h"

namespace tobarine {
namespace {

// What ADIF has no field for.
struct OwnField {
  std::string_view name;
  std::variant<std::string ZlogQso::*, unsigned ZlogQso::*, std::int32_t ZlogQso::*,
               bool ZlogQso::*>
      member;
  std::string_view other = {};  // another program's name for it
};

constexpr OwnField kOwnFields[] = {
    {"APP_TOBARINE_ZLOG_SERIAL", &ZlogQso::serial},
    {"APP_TOBARINE_ZLOG_POWER", &ZlogQso::power},
    {"APP_TOBARINE_ZLOG_MULTI1", &ZlogQso::multi1},
    {"APP_TOBARINE_ZLOG_MULTI2", &ZlogQso::multi2},
    {"APP_TOBARINE_ZLOG_NEW_MULTI1", &ZlogQso::new_multi1},
    {"APP_TOBARINE_ZLOG_NEW_MULTI2", &ZlogQso::new_multi2},
    {"APP_TOBARINE_ZLOG_POINTS", &ZlogQso::points, "APP_N1MM_POINTS"},
    {"APP_TOBARINE_ZLOG_CQ", &ZlogQso::cq},
    {"APP_TOBARINE_ZLOG_DUPE", &ZlogQso::dupe},
    {"APP_TOBARINE_ZLOG_RESERVE", &ZlogQso::reserve},
    {"APP_TOBARINE_ZLOG_TX", &ZlogQso::tx, "APP_N1MM_RADIO_NR"},
    {"APP_TOBARINE_ZLOG_RESERVE2", &ZlogQso::reserve2},
    {"APP_TOBARINE_ZLOG_RESERVE3", &ZlogQso::reserve3},
    {"APP_TOBARINE_ZLOG_QSY_VIOLATION", &ZlogQso::qsy_violation},
    {"APP_TOBARINE_ZLOG_PC", &ZlogQso::pc_name},
    {"APP_TOBARINE_ZLOG_FORCED", &ZlogQso::forced},
    {"APP_TOBARINE_ZLOG_INVALID", &ZlogQso::invalid},
    {"APP_TOBARINE_ZLOG_VERIFIED", &ZlogQso::verified},
    {"APP_TOBARINE_ZLOG_AREA", &ZlogQso::area},
};
constexpr std::string_view kOwnQsl = "APP_TOBARINE_ZLOG_QSL";
constexpr std::string_view kOwnMode = "APP_TOBARINE_ZLOG_MODE";
constexpr std::string_view kOwnContest = "APP_TOBARINE_ZLOG_CONTEST";
constexpr std::string_view kOtherExchange = "APP_N1MM_EXCHANGE1";

// The fields of the standard that zLog takes, in whole or in part.
constexpr Field kHeld[] = {Field::kCall,      Field::kQsoDate,   Field::kTimeOn,
                           Field::kBand,      Field::kFreq,      Field::kMode,
                           Field::kSubmode,   Field::kRstSent,   Field::kRstRcvd,
                           Field::kStx,       Field::kStxString, Field::kSrx,
                           Field::kSrxString, Field::kOperator,  Field::kStationCallsign,
                           Field::kContestId, Field::kTxPwr,     Field::kComment};

// Empty where the log says nothing.
std::string text_of(const std::string& value) {
  return value;
}
std::string text_of(bool value) {
  return value ? "Y" : "";
}
template <typename Number>
std::string text_of(Number value) {
  return value == 0 ? std::string() : std::to_string(value);
}

bool read_value(std::string_view text, std::string& value) {
  value = trim(text);
  return true;
}
bool read_value(std::string_view text, bool& value) {
  value = equal_ignoring_case(text, "Y") || text == "1";
  return true;
}
template <typename Number>
bool read_value(std::string_view text, Number& value) {
  value = 0;
  text = trim(text);
  if (text.empty()) return true;
  const char* const end = text.data() + text.size();
  const auto read = std::from_chars(text.data(), end, value);
  return read.ec == std::errc() && read.ptr == end;
}

// The point three places to the left: kHz to MHz, without the zeros that say nothing.
std::string mhz_of_khz(std::string_view khz) {
  const std::size_t point = std::min(khz.find('.'), khz.size());
  std::string whole(khz.substr(0, point));
  if (whole.size() < 4) whole.insert(0, 4 - whole.size(), '0');
  std::string mhz = whole.substr(0, whole.size() - 3) + "." + whole.substr(whole.size() - 3);
  mhz += khz.substr(std::min(point + 1, khz.size()));
  mhz.erase(mhz.find_last_not_of('0') + 1);
  if (mhz.ends_with('.')) mhz.pop_back();
  return mhz;
}

// And back, with one decimal at least, as zLog has it.
std::string khz_of_mhz(std::string_view mhz) {
  const std::size_t point = std::min(mhz.find('.'), mhz.size());
  std::string khz(mhz.substr(0, point));
  std::string decimals(mhz.substr(std::min(point + 1, mhz.size())));
  if (decimals.size() < 4) decimals.append(4 - decimals.size(), '0');
  khz += decimals.substr(0, 3);
  khz.erase(0, std::min(khz.find_first_not_of('0'), khz.size() - 1));
  decimals.erase(0, 3);
  decimals.erase(std::max<std::size_t>(decimals.find_last_not_of('0') + 1, 1));
  return khz + "." + decimals;
}

// The memo without the frequency in its first parentheses.
std::string comment_of(std::string_view memo) {
  if (freq_in_memo(memo).empty()) return std::string(memo);
  const std::size_t open = memo.find('(');
  const std::size_t close = memo.find(')', open);
  std::string comment(trim(memo.substr(0, open)));
  const std::string_view behind = trim(memo.substr(close + 1));
  if (!comment.empty() && !behind.empty()) comment += ' ';
  return comment.append(behind);
}

void set_number(std::string_view number, Field digits, Field text, Contact& contact) {
  contact.set(all_digits(number) ? digits : text, number);
}

std::string_view number_of(const Contact& contact, Field digits, Field text) {
  const std::string_view string = contact.get(text);
  return string.empty() ? contact.get(digits) : string;
}

// zLog's mode; `submode` becomes the submode that gets lost on the way.
std::string_view zlog_mode(const Contact& contact, std::string_view& submode) {
  const auto known = [](std::string_view mode) {
    return std::ranges::find(zlox::kModes, mode) != zlox::kModes.end();
  };
  if (const std::string_view own = contact.get(kOwnMode); !own.empty()) return own;
  const auto mode = standard_mode(contact.get(Field::kMode), contact.get(Field::kSubmode));
  if (!mode) return contact.get(Field::kMode);
  if (known(mode->submode)) return mode->submode;
  if (!known(mode->mode)) return mode->submode.empty() ? mode->mode : mode->submode;
  submode = mode->submode;
  return mode->mode;
}

// Whether a field that is not the standard's is one of those that are taken.
bool is_own(std::string_view name) {
  const auto same = [name](const OwnField& own) { return own.name == name || own.other == name; };
  return name == kOwnQsl || name == kOwnMode || name == kOwnContest || name == kOtherExchange ||
         std::ranges::any_of(kOwnFields, same);
}

// One contact on its way to zLog; what finds no place is put down.
class Taking {
 public:
  Taking(const Contact& contact, ZlogQso& qso) : contact_(contact), qso_(qso) {}

  void freq_band_and_mode() {
    const std::string_view mhz = contact_.get(Field::kFreq);
    const auto hertz = hertz_of_mhz(mhz);
    if (hertz) qso_.freq_khz = khz_of_mhz(trim(mhz));
    check(hertz || mhz.empty(), "FREQ", mhz);
    qso_.band = zlog_band(contact_.get(Field::kBand));
    if (!contact_.has(Field::kBand) && hertz) qso_.band = zlog_band(band_of(*hertz));
    std::string_view submode;
    qso_.mode = zlog_mode(contact_, submode);
    check(submode.empty(), "SUBMODE", submode);
  }

  void reports_and_numbers() {
    report(Field::kRstSent, qso_.rst_sent);
    report(Field::kRstRcvd, qso_.rst_received);
    qso_.sent_number = number_of(contact_, Field::kStx, Field::kStxString);
    qso_.received_number = number_of(contact_, Field::kSrx, Field::kSrxString);
    if (qso_.received_number.empty()) qso_.received_number = contact_.get(kOtherExchange);
    const std::string_view power = contact_.get(Field::kTxPwr);
    check(read_value(power, qso_.power2), "TX_PWR", power);
  }

  void own_fields() {
    for (const OwnField& own : kOwnFields) {
      std::string_view value = contact_.get(own.name);
      if (value.empty() && !own.other.empty()) value = contact_.get(own.other);
      const auto read = [&](auto member) { return read_value(value, qso_.*member); };
      check(std::visit(read, own.member), own.name, value);
    }
    unsigned wish = 0;
    const bool well = read_value(contact_.get(kOwnQsl), wish) && wish <= 2;
    qso_.qsl_wish = well ? static_cast<QslWish>(wish) : QslWish::kNone;
    check(well, kOwnQsl, contact_.get(kOwnQsl));
  }

  // Fields that zLog has no place for.
  void other_fields() {
    for (std::size_t i = 0; i < contact_.size(); ++i) {
      const Contact::Entry entry = contact_[i];
      const bool taken = entry.field == Field::kOther
                             ? is_own(entry.name)
                             : std::ranges::find(kHeld, entry.field) != std::end(kHeld);
      check(taken, entry.name, entry.value);
    }
  }

  const std::string& lost() const { return lost_; }

 private:
  void check(bool well, std::string_view name, std::string_view value) {
    if (well) return;
    lost_.append(lost_.empty() ? "" : "、").append(name).append("「").append(value).append("」");
  }

  // The digits of "599"; those in decibels have no place.
  void report(Field field, unsigned& report) {
    const std::string_view text = contact_.get(field);
    const bool well =
        read_value(text, report) && report <= std::numeric_limits<std::uint16_t>::max();
    if (!well) report = 0;
    check(well, field_name(field), text);
  }

  const Contact& contact_;
  ZlogQso& qso_;
  std::string lost_;
};

}  // namespace

void contact_from_zlog(const ZlogQso& qso, const ZlogHead& head, Contact& contact) {
  const Origin origin = contact.origin;
  contact.clear();
  contact.origin = origin;
  contact.set(Field::kCall, qso.call);
  if (qso.moment) contact.set_moment(*qso.moment);
  contact.set(Field::kBand, adif_band(qso.band));
  if (!qso.freq_khz.empty()) contact.set(Field::kFreq, mhz_of_khz(qso.freq_khz));
  if (const auto mode = standard_mode(qso.mode)) {
    contact.set(Field::kMode, mode->mode);
    contact.set(Field::kSubmode, mode->submode);
  } else {
    contact.set(kOwnMode, qso.mode);
  }
  contact.set(Field::kRstSent, text_of(qso.rst_sent));
  contact.set(Field::kRstRcvd, text_of(qso.rst_received));
  set_number(qso.sent_number, Field::kStx, Field::kStxString, contact);
  set_number(qso.received_number, Field::kSrx, Field::kSrxString, contact);
  contact.set(Field::kOperator, qso.operator_name);
  contact.set(Field::kStationCallsign, head.station_call);
  contact.set(Field::kContestId, contest_id(head.contest, qso.mode));
  contact.set(kOwnContest, head.contest);
  if (qso.power2 > 0) contact.set(Field::kTxPwr, text_of(qso.power2));
  contact.set(Field::kComment, comment_of(qso.memo));
  for (const OwnField& own : kOwnFields) {
    std::visit([&](auto member) { contact.set(own.name, text_of(qso.*member)); }, own.member);
  }
  contact.set(kOwnQsl, text_of(static_cast<unsigned>(qso.qsl_wish)));
}

void zlog_from_contact(const Contact& contact, bool form_has_freq, ZlogQso& qso,
                       FindingLog& findings) {
  qso = {};
  qso.call = contact.get(Field::kCall);
  qso.moment = contact.moment();
  qso.operator_name = contact.get(Field::kOperator);
  qso.memo = contact.get(Field::kComment);
  Taking taking(contact, qso);
  taking.freq_band_and_mode();
  taking.reports_and_numbers();
  taking.own_fields();
  taking.other_fields();
  if (!form_has_freq && !qso.freq_khz.empty()) {
    qso.memo.insert(0, "(" + qso.freq_khz + (qso.memo.empty() ? ")" : ") "));
  }
  if (!taking.lost().empty()) {
    findings.add(FindingKind::kFieldNotHeld, contact.origin.line, qso.call, taking.lost());
  }
}

ZlogHead zlog_head(const Contact& first, Zone zone) {
  const auto either = [&first](std::string_view wanted, Field otherwise) {
    return std::string(wanted.empty() ? first.get(otherwise) : wanted);
  };
  return {either(first.get(Field::kStationCallsign), Field::kOperator),
          either(first.get(kOwnContest), Field::kContestId), zone};
}

}  // namespace tobarine
