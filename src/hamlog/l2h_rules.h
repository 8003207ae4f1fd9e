// What happens to a contact from ADIF on its way to Hamlog's CSV: code and QTH, date and time, QSL
// column.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

#include "callsign/call_analysis.h"
#include "callsign/hamlog_codes.h"
#include "callsign/jcc_master.h"
#include "rules/findings.h"
#include "rules/qso_record.h"
#include "rules/time_shift.h"

namespace tobarine {

// The tables the rules ask. Owned by the caller, loaded before the run.
struct L2hTables {
  const CallAnalysis& calls;
  const DxccToHamlog& codes;
  const JccMaster& jcc;
};

// What a run leaves to the next one.
struct L2hState {
  std::string dx_flag;  // the last fifteenth column: "0" Japanese, "8" foreign, empty never set
};

// Call, date, time, report sent, report received, frequency, mode, code, grid, QSL, name, QTH,
// remarks 1, remarks 2, flag; see hamlog_csv.h for their forms. The views point into the record,
// the tables or the rules, and are valid until the next contact.
using HamlogColumns = std::array<std::string_view, 15>;

class L2hRules {
 public:
  // `write_qth`: the record's own QTH wins over the derived one.
  L2hRules(const L2hTables& tables, TimeMode time_mode, bool write_qth, L2hState& state)
      : tables_(tables), time_mode_(time_mode), write_qth_(write_qth), state_(state) {}

  // Fills the columns from a parsed record. `line` is for the findings.
  void apply(const QsoRecord& record, std::size_t line, HamlogColumns& columns,
             FindingLog& findings);

 private:
  void set_code_and_qth(const QsoRecord& r, std::string_view working_call, bool japanese,
                        std::size_t line, HamlogColumns& columns, FindingLog& findings);
  void set_foreign(const QsoRecord& r, unsigned dxcc, std::size_t line, HamlogColumns& columns,
                   FindingLog& findings) const;
  void set_date_and_time(const QsoRecord& r, bool japanese, std::size_t line,
                         HamlogColumns& columns, FindingLog& findings);

  L2hTables tables_;
  TimeMode time_mode_;
  bool write_qth_;
  L2hState& state_;
  std::string date_;  // the columns that are made here
  std::string time_;
  std::string code_;
  std::string qsl_;
};

}  // namespace tobarine
