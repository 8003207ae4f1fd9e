// The runs from a Hamlog log to ADIF.
#pragma once

#include <filesystem>

#include "convert/reference_tables.h"
#include "convert/report.h"
#include "convert/run.h"
#include "hamlog/h2l_rules.h"

namespace tobarine {

struct H2lJob {
  std::filesystem::path input;  // Hamlog CSV
  std::filesystem::path output;
  H2lOptions options;
};

// ADIF for Logger32 / for eQSL.cc. The output is created only when the input can be opened and is
// in the new layout. Throws FileError (also for the old layout), RecordError (first line),
// UsageError.
ConversionReport run_h2l(const H2lJob& job, const ConversionTables& tables, const CallTables& calls,
                         const RunContext& context);
ConversionReport run_eqsl(const H2lJob& job, const ConversionTables& tables,
                          const CallTables& calls, const RunContext& context);

}  // namespace tobarine
