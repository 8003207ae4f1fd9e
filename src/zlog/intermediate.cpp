#include "zlog/intermediate.h"

#include <array>

#include "rules/band.h"
#include "text/cp932.h"
#include "text/strings.h"
#include "text/utf8.h"
#include "zlog/plausible.h"

namespace tobarine {
namespace {

// "7025" to "7.025", "14025" to "14.025" (MHz), whatever the characters are; false when the text
// has another length.
bool freq_from_khz(std::string_view khz, std::string& freq) {
  const std::size_t length = char_count(khz);
  if (length != 4 && length != 5) return false;
  const std::string_view mhz = left_chars(khz, length - 3);
  freq.assign(mhz).append(".").append(khz.substr(mhz.size()));
  return true;
}

// The text between the memo's first "(" and first ")"; empty when they do not stand in this order.
std::string_view in_parentheses(std::string_view memo) {
  const std::size_t open = memo.find('(');
  const std::size_t close = memo.find(')');
  if (close == std::string_view::npos || close < open) return {};
  return trim(memo.substr(open + 1, close - open - 1));
}

void put_field(std::string_view value, std::string& buffer) {
  buffer += '"';
  if (contains(value, "\"")) {
    std::string doubled(value);
    replace_all(doubled, "\"", "\"\"");
    encode_cp932(doubled, buffer);
  } else {
    encode_cp932(value, buffer);
  }
  buffer += '"';
}

}  // namespace

CallParts split_call(std::string_view call) {
  const std::size_t slash = call.find('/');
  if (slash == std::string_view::npos) return {call, {}};
  const std::string_view before = call.substr(0, slash);
  const std::string_view behind = call.substr(slash + 1);
  const bool area = behind.size() == 1 && is_digit(behind[0]);
  if (!area && char_count(before) < char_count(behind)) return {behind, before, true};
  return {before, behind};
}

void IntermediateWriter::set_freq(const ZlogContact& contact, std::size_t number,
                                  FindingLog& findings) {
  if (!contains(contact.memo, "(")) {
    band_ = contact.band;
    band_from_zlog(band_, freq_, band_160m_);
  } else if (contains(contact.memo, "(0)")) {
    freq_ = contact.band;
  } else {
    const std::string_view khz = in_parentheses(contact.memo);
    const bool taken = freq_from_khz(khz, freq_);
    if (!taken || !all_digits(khz)) {
      findings.add(taken ? FindingKind::kFreqMisread : FindingKind::kFreqKept, number, contact.call,
                   contact.memo + " -> " + freq_);
    }
  }
  trim_in_place(freq_);
  if (freq_ == contact.band) return;
  const std::string_view by_freq = band_from_freq(freq_);
  if (!by_freq.empty() && by_freq != band_from_freq(contact.band)) {
    findings.add(FindingKind::kFreqOffBand, number, contact.call,
                 freq_ + " (バンド " + contact.band + ")");
  }
}

void IntermediateWriter::write(const ZlogContact& contact, std::size_t number,
                               FindingLog& findings) {
  if (const std::string odd = odd_fields(contact); !odd.empty()) {
    findings.add(FindingKind::kOddField, number, contact.call, odd);
  }
  set_freq(contact, number, findings);
  const CallParts parts = split_call(contact.call);
  time_.assign(contact.time) += zone_;
  const std::string_view date = contact.date;
  const std::array<std::string_view, kIntermediateFields> fields = {
      parts.home,
      parts.portable,
      mid_chars(date, 2, 8),
      time_,
      contact.his_rst,
      contact.my_rst,
      freq_,
      contact.mode,
      {},
      {},
      {},
      {},
      {},
      {},
      parts.prefix ? kDxMark : std::string_view(),
      contact.call};
  std::string& buffer = file_.buffer();
  const std::size_t before = buffer.size();
  for (const std::string_view field : fields) {
    put_field(field, buffer);
    buffer += ',';
  }
  buffer.pop_back();
  report_line_ends(blank_line_ends(buffer, before), number, contact.call, findings);
  buffer += "\r\n";
  file_.end_record();
}

}  // namespace tobarine
