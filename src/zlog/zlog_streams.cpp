#include "zlog/zlog_streams.h"

namespace tobarine {
namespace {

// What a contact says of the log's head otherwise than the head does; reported.
void report_head(const ZlogHead& said, const ZlogHead& head, std::size_t line,
                 std::string_view call, FindingLog& findings) {
  std::string lost;
  const auto check = [&lost](const std::string& value, const std::string& held, const char* what) {
    if (value.empty() || value == held) return;
    lost.append(lost.empty() ? "" : "、").append(what).append("「").append(value).append("」");
  };
  check(said.station_call, head.station_call, "局");
  check(said.contest, head.contest, "コンテスト");
  if (!lost.empty()) findings.add(FindingKind::kFieldNotHeld, line, call, lost);
}

}  // namespace

ZloxSink::ZloxSink(std::filesystem::path path, ZloxWriter::Form form, Zone zone, KeepRule rule)
    : path_(std::move(path)), form_(form), zone_(zone), rule_(std::move(rule)) {}

void ZloxSink::open(ZlogHead head, FindingLog& findings) {
  if (writer_) return;
  head_ = std::move(head);
  writer_.emplace(path_, form_, *head_, findings, rule_);
}

bool ZloxSink::put(const Contact& contact, FindingLog& findings) {
  const ZlogHead said = zlog_head(contact, zone_);
  open(said, findings);
  zlog_from_contact(contact, form_ == ZloxWriter::Form::kZlox, qso_, findings);
  if (!writer_->write(qso_, contact.origin.line, findings)) return false;
  report_head(said, *head_, contact.origin.line, qso_.call, findings);
  return true;
}

void ZloxSink::finish() {
  FindingLog nothing_to_tell;  // an empty head fits
  open({.station_call = {}, .contest = {}, .zone = zone_}, nothing_to_tell);
  writer_->close();
}

bool ZcsvSink::put(const Contact& contact, FindingLog& findings) {
  if (!head_told_) report_head(zlog_head(contact, Zone::kUtc), {}, 0, "", findings);
  head_told_ = true;
  zlog_from_contact(contact, true, qso_, findings);
  return writer_.write(qso_, contact.origin.line, findings);
}

}  // namespace tobarine
