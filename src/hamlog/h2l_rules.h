// What happens to a contact of a Hamlog log on its way to ADIF: the rules that the Logger32 and the
// eQSL.cc output share.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "callsign/call_analysis.h"
#include "callsign/hamlog_codes.h"
#include "rules/conversion_tables.h"
#include "rules/duplicates.h"
#include "rules/findings.h"
#include "rules/qso_record.h"

namespace tobarine {

// The remarks in which a state is looked for.
enum class StateRemarks { kRmks1, kRmks2, kEither };

// How a state is looked for: behind the keyword, or as a word of its own.
enum class StateSearch { kWord, kKeyword, kKeywordThenWord };

struct H2lOptions {
  bool use_rmks1 = true;
  bool use_rmks2 = true;
  bool keep_full_width_rmks1 = false;  // else remarks with a full-width character are dropped
  bool keep_full_width_rmks2 = false;
  bool leave_out_jst = false;
  bool leave_out_japanese_codes = false;  // codes up to 500A; then leave_out_jst has no effect
  bool dx_marker_in_comment = false;
  bool slash_call_in_comment = false;  // eQSL.cc: "UR call" before the remarks
  bool write_name = false;
  bool write_qth = false;
  bool write_state = false;
  StateRemarks state_remarks = StateRemarks::kEither;
  StateSearch state_search = StateSearch::kWord;
  std::string state_keyword = "WAS=";
};

// The tables the rules ask. Owned by the caller, loaded before the run.
struct H2lTables {
  const BandTable& bands;
  const ModeTable& modes;
  const CallAnalysis& calls;
  const HamlogToDxcc& codes;
};

enum class AdifTarget { kLogger32, kEqsl };

// A contact with every field that the writers need.
struct AdifContact {
  QsoRecord record;
  bool band_only = false;     // the remarks named the band: no FREQ is written
  bool name_written = false;  // the name qualifies (it may be empty)
};

// Whether the rules look calls up with these options; else the call-sign analysis may be empty.
bool asks_for_calls(const H2lOptions& options, AdifTarget target);

class H2lRules {
 public:
  H2lRules(H2lOptions options, const H2lTables& tables, AdifTarget target);

  // Derives the written fields from the source fields and the reader's forms. False: the user's
  // filters leave the contact out. `line` is for the findings.
  bool apply(AdifContact& contact, std::size_t line, FindingLog& findings);

 private:
  struct AdifMode {
    std::string as_read;
    std::string name;
    bool known;  // in the mode table, or a mode of ADIF
  };
  const AdifMode& adif_mode(const std::string& mode);
  bool is_left_out(const QsoRecord& r, std::size_t line, FindingLog& findings) const;
  void derive_band_and_mode(AdifContact& contact, std::size_t line, FindingLog& findings);
  void derive_codes(QsoRecord& r, std::size_t line, FindingLog& findings) const;
  void derive_qsl(QsoRecord& r, std::size_t line, FindingLog& findings);
  void derive_time(QsoRecord& r, std::size_t line, FindingLog& findings) const;
  void derive_place(QsoRecord& r, std::string_view kept1, std::string_view kept2, std::size_t line,
                    FindingLog& findings);
  void derive_comment(QsoRecord& r, std::string_view kept1, std::string_view kept2) const;
  std::string find_state(const QsoRecord& r, std::string_view entity_prefix, std::size_t line,
                         FindingLog& findings);
  void report_doubts(const AdifContact& contact, std::size_t line, FindingLog& findings);

  H2lOptions options_;
  H2lTables tables_;
  AdifTarget target_;
  std::string state_keyword_;  // trimmed, upper case
  std::string upper_remarks_;  // scratch
  Duplicates duplicates_;
  std::vector<AdifMode> modes_;  // the modes met so far: few, and looked for at every contact
};

}  // namespace tobarine
