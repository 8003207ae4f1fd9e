// One contact as today's zLog keeps it, in a binary log or in a CSV: all that its logs hold.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "rules/findings.h"
#include "rules/moment.h"

namespace tobarine {

enum class QslWish : std::uint8_t { kNone, kPlease, kNo };

// Every text is UTF-8, without blanks around; empty: the log says nothing.
struct ZlogQso {
  std::optional<Moment> moment;  // nothing: the log's is no day and time
  std::string call;
  std::string sent_number;
  std::string received_number;
  unsigned rst_sent = 0;  // 599
  unsigned rst_received = 0;
  std::int32_t serial = 0;
  std::string mode;   // one of zlox::kModes; a CSV may have others
  std::string band;   // one of zlo::kBands: "1.9" .. "5600", "10G"
  std::string power;  // "P", "L", "M" or "H"
  std::string multi1;
  std::string multi2;
  bool new_multi1 = false;
  bool new_multi2 = false;
  unsigned points = 0;
  std::string operator_name;
  std::string memo;
  bool cq = false;
  bool dupe = false;
  unsigned reserve = 0;
  unsigned tx = 0;  // the transmitter's number
  std::int32_t power2 = 0;
  std::int32_t reserve2 = 0;
  std::int32_t reserve3 = 0;
  std::string freq_khz;  // "7012.3"
  bool qsy_violation = false;
  std::string pc_name;
  bool forced = false;
  QslWish qsl_wish = QslWish::kNone;
  bool invalid = false;   // the operator struck it out
  bool verified = false;  // by a skimmer's report
  std::string area;       // a CSV's only

  std::string oddity;  // what the reader could not read, for the report
};

// What a log says once for all its contacts.
struct ZlogHead {
  std::string station_call;
  std::string contest;
  Zone zone = Zone::kUtc;  // of all times
};

// Adds a field to the oddity: its name and what stands in it.
void note_odd(ZlogQso& qso, std::string_view what, std::string_view value);

// What is odd about the contact in words, the reader's own remarks first; empty when all is well.
std::string odd_fields(const ZlogQso& qso);

// Whether zLog's logs can hold the contact: it has a day and time, a call and a band of theirs.
// Where they cannot it is reported; `number` is for that.
bool fits_zlog(const ZlogQso& qso, std::size_t number, FindingLog& findings);

// The frequency in kHz that stands between the memo's first parentheses, "7012.3"; empty when it is
// none, and for "(0)".
std::string_view freq_in_memo(std::string_view memo);

// Whether a text is a number with at most one point, as frequencies are.
bool is_decimal(std::string_view text);

}  // namespace tobarine
