#include "convert/adif_contacts.h"

#include "text/error.h"
#include "text/strings.h"

namespace tobarine {
namespace {

constexpr double kScanned = 0.3;  // the part of the work that is done when the contacts are counted

void report_layout(const AdifFileInfo& info, FindingLog& findings) {
  const std::string harm = classic_harm(info.layout);
  if (!harm.empty()) findings.add(FindingKind::kAdifLayout, 0, "", harm);
  if (info.layout.contacts == info.contacts) return;
  findings.add(FindingKind::kContactCount, 0, "",
               "交信 " + std::to_string(info.layout.contacts) + " 件、CALL のある行 " +
                   std::to_string(info.contacts) + " 行");
}

AdifFileInfo scan(const AdifInput& input, const RunContext& context, FindingLog& findings) {
  ReadingPace pace(context.part(0, kScanned));
  const AdifFileInfo info =
      scan_adif(input.path, findings, [&pace](const InputFile& file) { pace.at(file); });
  if (!info.is_adif) throw FileError(input.path, "ADIF ではないようです (CALL のタグがありません)");
  if (const std::string harm = classic_harm(info.layout);
      input.reading == AdifReading::kAsk && !harm.empty()) {
    throw FileError(input.path, harm + "。何も書いていません。" + reading_advice());
  }
  if (info.utf8) findings.add(FindingKind::kReadAsUtf8, 0, "", "");
  if (info.maybe_utf8) findings.add(FindingKind::kMaybeUtf8, 0, "", "");
  report_layout(info, findings);
  return info;
}

}  // namespace

AdifContacts::AdifContacts(const AdifInput& input, const ConversionTables& tables,
                           const RunContext& context, FindingLog& findings)
    : info_(scan(input, context, findings)),
      reader_(input.path, info_.utf8),
      parser_(tables.bands, tables.modes, input.remarks, input.use),
      pace_(context.part(kScanned, 1)) {
  if (input.remarks.emptied()) findings.add(FindingKind::kRemarksEmptied, 0, "", "");
}

bool AdifContacts::next(QsoRecord& record, FindingLog& findings) {
  pace_.at(reader_.file());
  if (!reader_.next(text_)) return false;
  parser_.parse(text_, line(), record, findings);
  report_doubts(record, findings);
  return true;
}

void AdifContacts::report_doubts(const QsoRecord& r, FindingLog& findings) {
  if (reader_.cut()) findings.add(FindingKind::kRecordCut, line(), r.call, "");
  if (reader_.invalid_bytes() > 0) {
    findings.add(FindingKind::kInvalidByte, line(), r.call,
                 std::to_string(reader_.invalid_bytes()) + " バイト");
  }
  if (!parser_.has_call()) return;
  upper_into(trim(r.call), call_);
  upper_into(trim(r.band), band_);
  upper_into(trim(r.mode), mode_);
  const std::size_t same =
      duplicates_.find_or_add(call_, band_, mode_, r.qso_date, r.time_on, line());
  if (same > 0) {
    findings.add(FindingKind::kDuplicate, line(), r.call, std::to_string(same) + " 行目と同じ");
  }
}

}  // namespace tobarine
