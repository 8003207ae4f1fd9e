#include "zlog/zlox_reader.h"

#include <algorithm>

#include "text/cp932.h"
#include "text/strings.h"
#include "zlog/zlo_reader.h"
#include "zlog/zlox_record.h"

namespace tobarine {
namespace {

// The length of a record, by what the file begins with.
std::size_t record_size(const std::filesystem::path& path) {
  InputFile file(path);
  std::string magic(zlo::kZloxMagic.size(), '\0');
  magic.resize(file.read(magic.data(), magic.size()));
  if (magic == zlo::kZloxMagic) return zlox::kRecordSize;
  refuse_foreign_zlo(path);
  return zlo::kRecordSize;
}

}  // namespace

ZloxReader::ZloxReader(const std::filesystem::path& path, std::optional<char> chosen_zone)
    : file_(path), record_(record_size(path)) {
  constexpr std::size_t kBufferedRecords = 256;
  buffer_.resize(kBufferedRecords * record_.size());
  read_record();
  if (record_.size() == zlox::kRecordSize) promised_ = zlo::read_32(record_, zlox::kContacts);
  contest_ = contest_of(record_);
  contest_.contacts = std::max<std::size_t>(file_.size() / record_.size(), 1) - 1;
  zone_ = zlo_zone(contest_, chosen_zone);
  head_.station_call = trim(from_cp932(zlo::text_bytes(record_, zlo::kCall)));
  head_.contest = contest_.name;
  head_.zone = zone_.letter == 'J' ? Zone::kJst : Zone::kUtc;
}

// Reads the next record, filled up with zero bytes; returns the number of bytes that were there.
std::size_t ZloxReader::read_record() {
  if (begin_ == end_) {
    begin_ = 0;
    end_ = file_.read(reinterpret_cast<char*>(buffer_.data()), buffer_.size());
  }
  const std::size_t bytes = std::min(end_ - begin_, record_.size());
  std::ranges::fill(record_, static_cast<unsigned char>(0));
  std::copy_n(buffer_.begin() + static_cast<std::ptrdiff_t>(begin_), bytes, record_.begin());
  begin_ += bytes;
  ++number_;
  return bytes;
}

void ZloxReader::report_end(std::size_t bytes, FindingLog& findings) const {
  if (bytes > 0) {
    const std::string call = from_cp932(zlo::text_bytes(record_, zlo::kCall));
    findings.add(FindingKind::kRecordCutOff, number_, call, std::to_string(bytes) + " バイト");
  }
  const std::size_t there = contest_.contacts + (bytes > 0 ? 1 : 0);
  if (promised_ > there) {
    findings.add(FindingKind::kRecordCutOff, 0, "",
                 "ファイルの頭には " + std::to_string(promised_) + " 件とあるが、あるのは " +
                     std::to_string(there) + " 件");
  }
}

bool ZloxReader::next(ZlogQso& qso, FindingLog& findings) {
  if (const std::size_t bytes = read_record(); bytes < record_.size()) {
    report_end(bytes, findings);
    return false;
  }
  const std::size_t invalid_bytes = zlox::decode(record_, head_.zone, qso);
  if (invalid_bytes > 0) {
    findings.add(FindingKind::kInvalidByte, number_, qso.call,
                 std::to_string(invalid_bytes) + " バイト");
  }
  if (const std::string odd = odd_fields(qso); !odd.empty()) {
    findings.add(FindingKind::kOddField, number_, qso.call, odd);
  }
  return true;
}

}  // namespace tobarine
