#include "zlog/zlo_writer.h"

#include <algorithm>
#include <bit>
#include <chrono>
#include <cmath>
#include <string>

#include "text/cp932.h"
#include "text/strings.h"
#include "text/utf8.h"

namespace tobarine {
namespace {

namespace chrono = std::chrono;

// "yyyy/mm/dd" and "hh:mm" to days since 1899-12-30.
double days_of(const ZlogMoment& moment) {
  const auto number = [](std::string_view text) { return static_cast<int>(leading_number(text)); };
  const std::string_view date = moment.date;
  const chrono::sys_days day =
      chrono::year(number(date)) / number(date.substr(5)) / number(date.substr(8));
  const std::string_view time = moment.time;
  const int minutes = number(time) * 60 + number(time.substr(3));
  constexpr chrono::sys_days kDayZero = chrono::year(1899) / 12 / 30;
  return static_cast<double>((day - kDayZero).count()) + minutes / (24 * 60.0);
}

// Fills the area with the text and blanks behind. The length byte counts characters, `per_char` for
// each. Returns the number of characters that CP932 lacks.
std::size_t put_text(std::string_view text, zlo::Area area, std::size_t per_char,
                     zlo::Record& record) {
  char* const begin = reinterpret_cast<char*>(record.data()) + area.length_at + 1;
  char* const end = begin + area.size;
  char* out = begin;
  std::size_t chars = 0;
  std::size_t lacking = 0;
  if (is_ascii(text)) {
    chars = std::min(text.size(), area.size);
    out = std::ranges::copy(text.substr(0, chars), out).out;
    text = {};
  }
  std::string encoded;
  while (!text.empty() && out < end) {
    const std::string_view one = left_chars(text, 1);
    encoded.clear();
    const std::size_t lacks = encode_cp932(one, encoded);
    if (encoded.size() > static_cast<std::size_t>(end - out)) break;
    out = std::ranges::copy(encoded, out).out;
    lacking += lacks;
    ++chars;
    text.remove_prefix(one.size());
  }
  std::fill(out, end, ' ');
  record[area.length_at] = static_cast<unsigned char>(chars * per_char);
  return lacking;
}

// Characters are counted as two bytes each in some length bytes, full-width or not.
constexpr std::size_t kOneByte = 1;
constexpr std::size_t kTwoBytes = 2;

template <typename Texts>
void put_code(const Texts& texts, std::string_view text, unsigned char& code) {
  const auto* const found = std::ranges::find(texts, text);
  if (found != texts.end()) code = static_cast<unsigned char>(found - texts.begin());
}

}  // namespace

void ZloWriter::put(const zlo::Record& record) {
  file_.buffer().append(reinterpret_cast<const char*>(record.data()), record.size());
  file_.end_record();
}

std::size_t ZloWriter::write_header(std::string_view station_call, std::string_view contest,
                                    char zone) {
  zlo::Record header{};
  zlo::write_16(header, zlo::kZone, zone == 'J' ? zlo::kZoneJst : zlo::kZoneUtc);
  const std::size_t lacking = put_text(station_call, zlo::kCall, kTwoBytes, header) +
                              put_text(contest, zlo::kContestName, kTwoBytes, header);
  put(header);
  return lacking;
}

std::size_t ZloWriter::write(const ZlogEntry& entry) {
  zlo::write_64(record_, zlo::kTime, std::bit_cast<std::uint64_t>(days_of(entry.zlo_moment)));
  std::size_t lacking = put_text(entry.call, zlo::kCall, kOneByte, record_);
  lacking += put_text(entry.sent_number, zlo::kSentNumber, kOneByte, record_);
  if (entry.serial != 0) zlo::write_16(record_, zlo::kSerial, entry.serial);
  lacking += put_text(entry.received_number, zlo::kReceivedNumber, kOneByte, record_);
  put_text(entry.received_number, zlo::kMultiplier1, kOneByte, record_);
  const auto report = [](const std::string& text) {
    return static_cast<unsigned>(std::nearbyint(std::min(leading_number(text), 65535.0)));
  };
  zlo::write_16(record_, zlo::kRstSent, report(entry.his_rst));
  zlo::write_16(record_, zlo::kRstReceived, report(entry.my_rst));
  put_code(zlo::kModes, entry.mode, record_[zlo::kMode]);
  put_code(zlo::kBands, entry.band, record_[zlo::kBand]);
  record_[zlo::kNewMultiplier1] = 1;
  record_[zlo::kNewMultiplier2] = 0;
  record_[zlo::kPoints] = zlo::stored_byte(entry.points).value_or(0);
  if (entry.operator_name) {
    lacking += put_text(*entry.operator_name, zlo::kOperator, kTwoBytes, record_);
  }
  memo_.clear();
  put_memo(entry, false, memo_);
  lacking += put_text(memo_, zlo::kMemo, kTwoBytes, record_);
  if (entry.tx_number) {
    record_[zlo::kTxNumber] = zlo::stored_byte(*entry.tx_number).value_or(0);
  }
  put(record_);
  return lacking;
}

}  // namespace tobarine
