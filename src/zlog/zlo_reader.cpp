#include "zlog/zlo_reader.h"

#include <algorithm>
#include <bit>
#include <chrono>
#include <optional>
#include <ratio>
#include <span>

#include "text/cp932.h"
#include "text/error.h"

namespace tobarine {
namespace {

namespace chrono = std::chrono;

struct ZloTime {
  chrono::year_month_day date;
  chrono::minutes of_day;
};

// The arithmetic defines the rounding and is kept as it is: it works on the two halves of the
// double, of which one unit in the upper half is 1/32 of a day for all accepted days.
std::optional<ZloTime> decode_time(std::uint64_t time) {
  const auto days_since_1899 = std::bit_cast<double>(time);
  if (!(days_since_1899 >= zlo::kFirstDay && days_since_1899 < zlo::kDayAfterLast)) {
    return std::nullopt;
  }
  constexpr std::int64_t kUpperHalfOf2001 = 0x40E20380;  // of the double of 2001/01/01
  constexpr std::int64_t kUnitsPerMinute = 60 * std::int64_t{0x001845C8};
  using UpperUnits = chrono::duration<std::int64_t, std::ratio<86400, 32>>;
  const UpperUnits since_2001(static_cast<std::int64_t>(time >> 32) - kUpperHalfOf2001);
  const auto days = chrono::floor<chrono::days>(since_2001);
  const std::int64_t units =
      (since_2001 - days).count() << 32 | static_cast<std::int64_t>(time & 0xFFFFFFFF);
  return ZloTime{chrono::sys_days(chrono::year(2001) / 1 / 1) + days,
                 chrono::minutes(units / kUnitsPerMinute)};
}

void put_digits(unsigned number, int digits, char* at) {
  for (int i = digits - 1; i >= 0; --i, number /= 10) at[i] = static_cast<char>('0' + number % 10);
}

void set_time(const ZloTime& time, ZlogContact& contact) {
  contact.date = "yyyy/mm/dd";
  put_digits(static_cast<unsigned>(static_cast<int>(time.date.year())), 4, contact.date.data());
  put_digits(static_cast<unsigned>(time.date.month()), 2, contact.date.data() + 5);
  put_digits(static_cast<unsigned>(time.date.day()), 2, contact.date.data() + 8);
  const auto minutes = static_cast<unsigned>(time.of_day.count());
  contact.time = "hh:mm";
  put_digits(minutes / 60, 2, contact.time.data());
  put_digits(minutes % 60, 2, contact.time.data() + 3);
}

// Replaces `text` by the record's.
std::size_t decode_text(const zlo::Record& record, zlo::Area area, std::string& text) {
  text.clear();
  return decode_cp932(zlo::text_bytes(record, area), text);
}

// The code's text; an unknown code leaves the text as it is. `newer` are the texts of the codes
// that follow the known ones in newer logs. Returns what to report, empty when the code is known.
std::string set_code(unsigned code, std::span<const std::string_view> texts,
                     std::span<const std::string_view> newer, std::string& text) {
  if (code < texts.size()) {
    text = texts[code];
    return {};
  }
  std::string unknown = std::to_string(code);
  const std::size_t place = code - texts.size();
  if (place < newer.size()) unknown.append(" (今の zLog では ").append(newer[place]).append(")");
  return unknown.append(" -> 「").append(text).append("」");
}

// Whether a text can be one: its length at most twice its area, as lengths are written now and
// then, and no control characters in it.
bool is_text(const zlo::Record& record, zlo::Area area) {
  const auto plain = [](char c) { return static_cast<unsigned char>(c) >= ' '; };
  return record[area.length_at] <= 2 * area.size &&
         std::ranges::all_of(zlo::text_bytes(record, area), plain);
}

}  // namespace

void refuse_foreign_zlo(const std::filesystem::path& path) {
  InputFile file(path);
  zlo::Record record{};
  const auto read = [&file, &record] {
    return file.read(reinterpret_cast<char*>(record.data()), record.size()) == record.size();
  };
  if (!read()) {
    throw FileError(path, file.bytes_read() == 0 ? "空のファイルです"
                                                 : "短すぎます (256 バイトの記録が一つもない)");
  }
  if (std::string_view(reinterpret_cast<const char*>(record.data()), record.size())
          .starts_with(zlo::kZloxMagic)) {
    throw FileError(path,
                    "今の zLog の .ZLOX です。この形はまだ読めません。"
                    "zLog で .ALL か .ZLO として保存し直して下さい");
  }
  if (is_text(record, zlo::kCall) && is_text(record, zlo::kContestName)) return;
  constexpr std::size_t kOneInTen = 10;
  std::size_t contacts = 0;
  std::size_t with_time = 0;
  for (; read(); ++contacts) {
    if (decode_time(zlo::read_64(record, zlo::kTime))) ++with_time;
  }
  if (with_time > 0 && with_time * kOneInTen >= contacts) return;
  throw FileError(path, "zLog の .ZLO ではありません (交信の日時がほとんど無い)");
}

ZloReader::ZloReader(const std::filesystem::path& path)
    : file_(path), records_(zlo::record_count(file_.size())) {
  read_record();
}

// Reads the next record, filled up with zero bytes; returns the number of bytes that were there.
std::size_t ZloReader::read_record() {
  constexpr std::size_t kBufferedRecords = 256;
  if (taken_ == buffer_.size()) {
    buffer_.resize(kBufferedRecords * record_.size());
    buffer_.resize(file_.read(buffer_.data(), buffer_.size()));
    taken_ = 0;
  }
  const std::string_view bytes = std::string_view(buffer_).substr(taken_, record_.size());
  taken_ += bytes.size();
  ++number_;
  record_.fill(0);
  std::ranges::copy(bytes, record_.begin());
  return bytes.size();
}

void ZloReader::report_cut_off(std::size_t bytes, FindingLog& findings) const {
  if (bytes == 0) return;
  const std::string call = from_cp932(zlo::text_bytes(record_, zlo::kCall));
  findings.add(FindingKind::kRecordCutOff, number_, call, std::to_string(bytes) + " バイト");
}

void ZloReader::set_codes(ZlogContact& contact, FindingLog& findings) {
  const std::string mode = set_code(record_[zlo::kMode], zlo::kModes, zlo::kNewerModes, mode_);
  if (record_[zlo::kMode] == zlo::kModeRtty) mode_ = zlo::kRttyInTextLogs;
  const std::string band = set_code(record_[zlo::kBand], zlo::kBands, {}, band_);
  if (!mode.empty()) findings.add(FindingKind::kModeKept, number_, contact.call, mode);
  if (!band.empty()) findings.add(FindingKind::kBandKept, number_, contact.call, band);
  contact.mode = mode_;
  contact.band = band_;
}

bool ZloReader::next(ZlogContact& contact, FindingLog& findings) {
  while (number_ < records_) {
    if (const std::size_t bytes = read_record(); bytes < record_.size()) {
      report_cut_off(bytes, findings);
      return false;
    }
    std::size_t invalid_bytes = decode_text(record_, zlo::kCall, contact.call);
    const auto time = decode_time(zlo::read_64(record_, zlo::kTime));
    if (!time) {
      findings.add(FindingKind::kLeftOutByTime, number_, contact.call, "");
      continue;
    }
    set_time(*time, contact);
    invalid_bytes += decode_text(record_, zlo::kMemo, contact.memo);
    contact.his_rst = std::to_string(zlo::read_16(record_, zlo::kRstSent));
    contact.my_rst = std::to_string(zlo::read_16(record_, zlo::kRstReceived));
    contact.oddity.clear();
    set_codes(contact, findings);
    if (invalid_bytes > 0) {
      findings.add(FindingKind::kInvalidByte, number_, contact.call,
                   std::to_string(invalid_bytes) + " バイト");
    }
    return true;
  }
  report_cut_off(read_record(), findings);  // less than half a record: it has not been counted
  return false;
}

}  // namespace tobarine
