#include "zlog/zlox_record.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>
#include <span>

#include "text/cp932.h"
#include "text/strings.h"
#include "text/utf8.h"

namespace tobarine::zlox {
namespace {

constexpr double kSecondsADay = 86400;
constexpr std::int64_t kDayZero = -25569 * std::int64_t{86400};  // 1899-12-30, seconds from 1970
constexpr std::int64_t kJstAhead = 9 * std::int64_t{3600};
constexpr double kDayAfterLast = 2958466;  // the year 10000

std::int64_t ahead_of_utc(Zone zone) {
  return zone == Zone::kJst ? kJstAhead : 0;
}

std::optional<Moment> moment_of(std::uint64_t bits, Zone zone) {
  const auto days = std::bit_cast<double>(bits);
  if (!(days >= 1 && days < kDayAfterLast)) return std::nullopt;
  const auto seconds = static_cast<std::int64_t>(std::llround(days * kSecondsADay));
  return Moment::at(kDayZero + seconds - ahead_of_utc(zone), Moment::Precision::kSecond, zone);
}

std::uint64_t bits_of(const Moment& moment, Zone zone) {
  const std::int64_t seconds = moment.utc_seconds() + ahead_of_utc(zone) - kDayZero;
  return std::bit_cast<std::uint64_t>(static_cast<double>(seconds) / kSecondsADay);
}

// A record that is read; texts keep their memory from contact to contact.
class Decoder {
 public:
  explicit Decoder(zlo::Bytes record) : record_(record) {}

  void text(zlo::Area area, std::string& result) {
    result.clear();
    invalid_bytes_ += decode_cp932(zlo::text_bytes(record_, area), result);
    trim_in_place(result);
  }
  bool flag(std::size_t at) const { return record_[at] != 0; }
  std::int32_t number(std::size_t at) const {
    return static_cast<std::int32_t>(zlo::read_32(record_, at));
  }
  void code(std::size_t at, std::span<const std::string_view> texts, std::string_view what,
            std::string& result, ZlogQso& qso) const {
    result.clear();
    if (record_[at] < texts.size()) {
      result = texts[record_[at]];
    } else {
      note_odd(qso, what, "コード " + std::to_string(record_[at]));
    }
  }
  std::size_t invalid_bytes() const { return invalid_bytes_; }

 private:
  zlo::Bytes record_;
  std::size_t invalid_bytes_ = 0;
};

// What only the longer form has.
void decode_newer(zlo::Bytes record, Decoder& decoder, ZlogQso& qso) {
  decoder.text(kFreq, qso.freq_khz);
  if (!qso.freq_khz.empty() && !is_decimal(qso.freq_khz)) {
    note_odd(qso, "周波数", qso.freq_khz);
    qso.freq_khz.clear();
  }
  qso.qsy_violation = decoder.flag(kQsyViolation);
  decoder.text(kPcName, qso.pc_name);
  qso.forced = decoder.flag(kForced);
  const unsigned wish = record[kQslWish];
  qso.qsl_wish = wish <= 2 ? static_cast<QslWish>(wish) : QslWish::kNone;
  if (wish > 2) note_odd(qso, "QSL", "コード " + std::to_string(wish));
  qso.invalid = decoder.flag(kInvalid);
  qso.verified = decoder.flag(kVerified);
}

// What a .ZLO does not say, but for the frequency.
void clear_newer(ZlogQso& qso) {
  qso.qsy_violation = qso.forced = qso.invalid = qso.verified = false;
  qso.qsl_wish = QslWish::kNone;
  qso.pc_name.clear();
  qso.freq_khz.clear();
}

// A record that is built.
class Encoder {
 public:
  Encoder(zlo::Buffer record, Loss& loss) : record_(record), loss_(loss) {}

  void text(zlo::Area area, std::string_view what, std::string_view value) {
    std::string_view kept = left_chars(value, area.size);
    std::string bytes;
    std::size_t lacking = encode_cp932(kept, bytes);
    while (bytes.size() > area.size) {
      kept = left_chars(kept, char_count(kept) - 1);
      bytes.clear();
      lacking = encode_cp932(kept, bytes);
    }
    loss_.lacking += lacking;
    cut_ = kept.size() < value.size();
    while (bytes.ends_with(' ')) bytes.pop_back();
    record_[area.length_at] = static_cast<unsigned char>(bytes.size());
    std::ranges::copy(bytes, record_.subspan(area.length_at + 1).begin());
    tell(what);
  }
  void byte(std::size_t at, std::string_view what, unsigned value) {
    record_[at] = static_cast<unsigned char>(within<unsigned char>(value));
    tell(what);
  }
  void word(std::size_t at, std::string_view what, unsigned value) {
    zlo::write_16(record_, at, within<std::uint16_t>(value));
    tell(what);
  }
  void number(std::size_t at, std::int32_t value) {
    zlo::write_32(record_, at, static_cast<std::uint32_t>(value));
  }
  void flag(std::size_t at, bool value) { record_[at] = value ? 1 : 0; }

  // False: the text has no code.
  bool code(std::size_t at, std::span<const std::string_view> texts, std::string_view text) {
    const auto found = std::ranges::find(texts, text);
    if (found == texts.end()) return false;
    record_[at] = static_cast<unsigned char>(found - texts.begin());
    return true;
  }

 private:
  template <typename Field>
  unsigned within(unsigned value) {
    constexpr unsigned kMost = std::numeric_limits<Field>::max();
    cut_ = cut_ || value > kMost;
    return std::min(value, kMost);
  }
  void tell(std::string_view what) {
    if (cut_) loss_.cut.append(loss_.cut.empty() ? "" : "、").append(what);
    cut_ = false;
  }

  zlo::Buffer record_;
  Loss& loss_;
  bool cut_ = false;
};

}  // namespace

std::size_t decode(zlo::Bytes record, Zone zone, ZlogQso& qso) {
  Decoder decoder(record);
  qso.oddity.clear();
  qso.moment = moment_of(zlo::read_64(record, zlo::kTime), zone);
  decoder.text(zlo::kCall, qso.call);
  decoder.text(kSentNumber, qso.sent_number);
  decoder.text(kReceivedNumber, qso.received_number);
  qso.rst_sent = zlo::read_16(record, zlo::kRstSent);
  qso.rst_received = zlo::read_16(record, zlo::kRstReceived);
  qso.serial = decoder.number(zlo::kSerial);
  decoder.code(zlo::kMode, kModes, "モード", qso.mode, qso);
  decoder.code(zlo::kBand, zlo::kBands, "バンド", qso.band, qso);
  decoder.code(kPower, kPowers, "電力", qso.power, qso);
  decoder.text(zlo::kMultiplier1, qso.multi1);
  decoder.text(kMultiplier2, qso.multi2);
  qso.new_multi1 = decoder.flag(zlo::kNewMultiplier1);
  qso.new_multi2 = decoder.flag(zlo::kNewMultiplier2);
  qso.points = record[zlo::kPoints];
  decoder.text(zlo::kOperator, qso.operator_name);
  decoder.text(kMemo, qso.memo);
  qso.cq = decoder.flag(kCq);
  qso.dupe = decoder.flag(kDupe);
  qso.reserve = record[kReserve];
  qso.tx = record[zlo::kTxNumber];
  qso.power2 = decoder.number(kPower2);
  qso.reserve2 = decoder.number(kReserve2);
  qso.reserve3 = decoder.number(kReserve3);
  qso.area.clear();
  if (record.size() >= kRecordSize) {
    decode_newer(record, decoder, qso);
  } else {
    clear_newer(qso);
  }
  if (qso.freq_khz.empty()) qso.freq_khz = freq_in_memo(qso.memo);
  return decoder.invalid_bytes();
}

Loss encode(const ZlogQso& qso, Zone zone, zlo::Buffer record) {
  Loss loss;
  Encoder encoder(record, loss);
  std::ranges::fill(record, static_cast<unsigned char>(0));
  zlo::write_64(record, zlo::kTime, bits_of(*qso.moment, zone));
  encoder.text(zlo::kCall, "コール", qso.call);
  encoder.text(kSentNumber, "送信番号", qso.sent_number);
  encoder.text(kReceivedNumber, "受信番号", qso.received_number);
  encoder.word(zlo::kRstSent, "RST", qso.rst_sent);
  encoder.word(zlo::kRstReceived, "RST", qso.rst_received);
  encoder.number(zlo::kSerial, qso.serial);
  if (!encoder.code(zlo::kMode, kModes, qso.mode)) record[zlo::kMode] = kModes.size() - 1;
  encoder.code(zlo::kBand, zlo::kBands, qso.band);
  encoder.code(kPower, kPowers, qso.power);
  encoder.text(zlo::kMultiplier1, "マルチ", qso.multi1);
  encoder.text(kMultiplier2, "マルチ", qso.multi2);
  encoder.flag(zlo::kNewMultiplier1, qso.new_multi1);
  encoder.flag(zlo::kNewMultiplier2, qso.new_multi2);
  encoder.byte(zlo::kPoints, "得点", qso.points);
  encoder.text(zlo::kOperator, "オペレーター", qso.operator_name);
  encoder.text(kMemo, "メモ", qso.memo);
  encoder.flag(kCq, qso.cq);
  encoder.flag(kDupe, qso.dupe);
  encoder.byte(kReserve, "予備", qso.reserve);
  encoder.byte(zlo::kTxNumber, "TX#", qso.tx);
  encoder.number(kPower2, qso.power2);
  encoder.number(kReserve2, qso.reserve2);
  encoder.number(kReserve3, qso.reserve3);
  if (record.size() < kRecordSize) return loss;
  encoder.text(kFreq, "周波数", qso.freq_khz);
  encoder.flag(kQsyViolation, qso.qsy_violation);
  encoder.text(kPcName, "PC 名", qso.pc_name);
  encoder.flag(kForced, qso.forced);
  record[kQslWish] = static_cast<unsigned char>(qso.qsl_wish);
  encoder.flag(kInvalid, qso.invalid);
  encoder.flag(kVerified, qso.verified);
  return loss;
}

Loss encode_header(const ZlogHead& head, std::uint32_t contacts, zlo::Buffer record) {
  Loss loss;
  Encoder encoder(record, loss);
  std::ranges::fill(record, static_cast<unsigned char>(0));
  if (record.size() >= kRecordSize) {
    std::ranges::copy(zlo::kZloxMagic, record.begin());
    zlo::write_32(record, kContacts, contacts);
  }
  encoder.text(zlo::kCall, "コール", head.station_call);
  zlo::write_16(record, zlo::kZone, head.zone == Zone::kJst ? zlo::kZoneJst : zlo::kZoneUtc);
  encoder.text(zlo::kContestName, "コンテスト名", head.contest);
  return loss;
}

}  // namespace tobarine::zlox
