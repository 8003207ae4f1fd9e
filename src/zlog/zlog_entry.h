// One contact as the writers of zLog's logs take it. Every text is UTF-8.
#pragma once

#include <optional>
#include <string>

namespace tobarine {

struct ZlogMoment {
  std::string date;  // "yyyy/mm/dd"
  std::string time;  // "hh:mm"
};

struct ZlogEntry {
  ZlogMoment all_moment;  // the two logs may be in different zones
  ZlogMoment zlo_moment;
  std::string call;
  std::string his_rst;  // report sent
  std::string my_rst;   // report received
  std::string sent_number;
  std::string received_number;
  unsigned serial = 0;  // of a running sent number; 0: the number is no serial one
  std::string band;     // one of zLog's band texts
  std::string mode;     // one of zLog's mode texts
  unsigned points = 0;

  std::string khz;    // the frequency: four or five digits, "0" for that of the band, or empty
  std::string notes;  // what else goes into the memo
  std::optional<std::string> operator_name;  // nothing: the field is not written
  std::optional<unsigned> tx_number;
};

// Appends the memo: the frequency in parentheses, the operator between "%%" where wanted, the
// notes, each where there is one, with blanks between.
void put_memo(const ZlogEntry& entry, bool with_operator, std::string& text);

}  // namespace tobarine
