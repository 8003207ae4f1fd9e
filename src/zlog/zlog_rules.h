// What happens to a contact from ADIF on its way to zLog's logs.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "rules/findings.h"
#include "rules/qso_record.h"
#include "zlog/zlog_entry.h"

namespace tobarine {

struct ZlogOptions {
  bool all_to_jst = false;         // the text log; else its times stay as they are
  bool zlo_to_jst = false;         // the binary log
  std::string sent_number;         // where the contact has none of its own
  bool running_number = false;     // 001, 002, ... is sent instead
  bool drop_power_letter = false;  // one H, M, L or P at the end of the received number
  bool write_operator = false;
  bool write_tx_number = false;
  bool write_comment = false;  // into the memo, as the next two
  bool write_age = false;
  bool write_iota = false;
};

// The texts of a contact that the options may send to memo or remarks; empty when there is none.
std::string age_text(const QsoRecord& record);
unsigned tx_number(const QsoRecord& record);  // 0 when there is none

class ZlogRules {
 public:
  explicit ZlogRules(ZlogOptions options) : options_(std::move(options)) {}

  enum class Fate {
    kWrite,    // the entry is complete
    kLeftOut,  // zLog has no band for the contact: reported
    kRefused,  // refusal() says why the conversion cannot go on
  };

  // Fills the entry from a record parsed from ADIF, which has a call and a date. `line` is for the
  // findings.
  Fate apply(const QsoRecord& record, std::size_t line, ZlogEntry& entry, FindingLog& findings);

  const std::string& refusal() const { return refusal_; }

  // Contacts whose frequency lost what is below 1 kHz.
  std::size_t cut_freqs() const { return cut_freqs_; }

 private:
  bool set_numbers(const QsoRecord& r, ZlogEntry& entry);
  void set_moments(const QsoRecord& r, ZlogEntry& entry) const;
  void set_mode(const QsoRecord& r, std::size_t line, ZlogEntry& entry, FindingLog& findings) const;
  void set_memo(const QsoRecord& r, ZlogEntry& entry) const;
  void set_khz(const QsoRecord& r, std::size_t line, ZlogEntry& entry, FindingLog& findings);

  ZlogOptions options_;
  unsigned serial_ = 0;  // the last one sent
  std::size_t cut_freqs_ = 0;
  std::string refusal_;
};

}  // namespace tobarine
