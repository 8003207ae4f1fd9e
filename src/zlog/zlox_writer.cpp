#include "zlog/zlox_writer.h"

#include <algorithm>
#include <utility>

namespace tobarine {
namespace {

std::string_view chars(zlo::Bytes record) {
  return {reinterpret_cast<const char*>(record.data()), record.size()};
}

void report(const zlox::Loss& loss, std::size_t number, std::string_view call,
            FindingLog& findings) {
  if (!loss.cut.empty()) findings.add(FindingKind::kZlogFieldCut, number, call, loss.cut);
  if (loss.lacking > 0) {
    findings.add(FindingKind::kNotEncodable, number, call, std::to_string(loss.lacking) + " 文字");
  }
}

}  // namespace

ZloxWriter::ZloxWriter(std::filesystem::path path, Form form, ZlogHead head, FindingLog& findings,
                       const KeepRule& rule)
    : path_(std::move(path)),
      head_(std::move(head)),
      file_(path_, rule),
      record_size_(form == Form::kZlox ? zlox::kRecordSize : zlo::kRecordSize) {
  report(zlox::encode_header(head_, 0, record()), 0, "", findings);
  file_.buffer().append(chars(record()));
  file_.end_record();
}

zlo::Buffer ZloxWriter::record() {
  return zlo::Buffer(buffer_).first(record_size_);
}

// What the shorter form has no place for, and what neither has.
void ZloxWriter::report_not_held(const ZlogQso& qso, std::size_t number,
                                 FindingLog& findings) const {
  std::string lost;
  const auto check = [&lost](bool lose, std::string_view what) {
    if (lose) lost.append(lost.empty() ? "" : "、").append(what);
  };
  check(!qso.area.empty(), "Area");
  if (record_size_ < zlox::kRecordSize) {
    check(!qso.freq_khz.empty() && freq_in_memo(qso.memo) != qso.freq_khz, "周波数");
    check(qso.qsy_violation || qso.forced || qso.verified || qso.qsl_wish != QslWish::kNone,
          "QSY、強制、QSL、RBN の印");
    check(!qso.pc_name.empty(), "PC 名");
    check(qso.invalid, "無効の印");
  }
  if (!lost.empty()) findings.add(FindingKind::kZlogFieldCut, number, qso.call, lost);
}

bool ZloxWriter::write(const ZlogQso& qso, std::size_t number, FindingLog& findings) {
  if (!fits_zlog(qso, number, findings)) return false;
  if (std::ranges::find(zlox::kModes, qso.mode) == zlox::kModes.end()) {
    findings.add(FindingKind::kOtherMode, number, qso.call, qso.mode);
  }
  report(zlox::encode(qso, head_.zone, record()), number, qso.call, findings);
  report_not_held(qso, number, findings);
  file_.buffer().append(chars(record()));
  file_.end_record();
  ++contacts_;
  return true;
}

void ZloxWriter::close() {
  file_.close();
  if (record_size_ < zlox::kRecordSize) return;
  zlox::encode_header(head_, contacts_, record());
  overwrite_start_of_file(path_, chars(record()));
}

}  // namespace tobarine
