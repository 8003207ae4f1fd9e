#include "convert/adif_contacts.h"

#include "text/error.h"

namespace tobarine {
namespace {

AdifFileInfo scan(const std::filesystem::path& path, FindingLog& findings) {
  const AdifFileInfo info = scan_adif(path);
  if (!info.is_adif) throw FileError(path, "ADIF ではないようです (CALL のタグがありません)");
  if (info.utf8) findings.add(FindingKind::kReadAsUtf8, 0, "", "");
  if (info.maybe_utf8) findings.add(FindingKind::kMaybeUtf8, 0, "", "");
  return info;
}

}  // namespace

AdifContacts::AdifContacts(const std::filesystem::path& path, const BandTable& bands,
                           const ModeTable& modes, const L2hRemarks& remarks, FindingLog& findings)
    : info_(scan(path, findings)), reader_(path, info_.utf8), parser_(bands, modes, remarks) {
  if (remarks.emptied()) findings.add(FindingKind::kRemarksEmptied, 0, "", "");
}

bool AdifContacts::next(QsoRecord& record, FindingLog& findings) {
  if (!reader_.next(text_)) return false;
  parser_.parse(text_, line(), record, findings);
  if (reader_.cut()) findings.add(FindingKind::kRecordCut, line(), record.call, "");
  if (reader_.invalid_bytes() > 0) {
    findings.add(FindingKind::kInvalidByte, line(), record.call,
                 std::to_string(reader_.invalid_bytes()) + " バイト");
  }
  return true;
}

}  // namespace tobarine
