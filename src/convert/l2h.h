// The run from ADIF to Hamlog's CSV.
#pragma once

#include <filesystem>
#include <vector>

#include "convert/adif_reading.h"
#include "convert/reference_tables.h"
#include "convert/report.h"
#include "convert/run.h"
#include "hamlog/adif_parser.h"
#include "hamlog/l2h_rules.h"

namespace tobarine {

struct L2hOptions {
  L2hRemarks remarks;
  bool write_qth = false;  // the record's QTH wins over the derived one
  TimeMode time_mode = TimeMode::kNone;
};

struct L2hJob {
  std::filesystem::path input;   // ADIF
  std::filesystem::path output;  // Hamlog CSV
  L2hOptions options;
  // Where the temporary file may stand, in order of preference.
  std::vector<std::filesystem::path> temporary_folders;
  AdifReading reading = AdifReading::kAsk;
};

// Writes every contact to a temporary file, then copies the lines that hold no "//" to the output,
// which is touched only when the first pass has succeeded. In the report `read` counts the contacts
// as scan_adif() does, `written` the copied lines. Throws FileError, RecordError, UsageError.
ConversionReport run_l2h(const L2hJob& job, const ConversionTables& tables, const CallTables& calls,
                         const PlaceTables& places, L2hState& state, const RunContext& context);

}  // namespace tobarine
