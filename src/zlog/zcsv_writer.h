// zLog's CSV, written. See zcsv_columns.h.
#pragma once

#include <cstddef>

#include "rules/findings.h"
#include "rules/moment.h"
#include "text/output_file.h"
#include "zlog/zlog_qso.h"

namespace tobarine {

class ZcsvWriter {
 public:
  // Writes the mark and the heading. The file stays the caller's, who closes it. `zone` is that of
  // all times.
  ZcsvWriter(OutputFile& file, Zone zone);

  // False: the contact has no day and time, no call or no band of zLog's; reported. `number` is for
  // the findings.
  bool write(const ZlogQso& qso, std::size_t number, FindingLog& findings);

 private:
  OutputFile& file_;
  Zone zone_;
};

}  // namespace tobarine
