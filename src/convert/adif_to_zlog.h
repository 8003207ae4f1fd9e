// The run from ADIF (N1MM) to zLog's two logs and Hamlog's CSV, in one pass.
#pragma once

#include <array>
#include <filesystem>
#include <string_view>
#include <vector>

#include "convert/adif_reading.h"
#include "convert/reference_tables.h"
#include "convert/report.h"
#include "convert/run.h"
#include "hamlog/adif_parser.h"
#include "hamlog/l2h_rules.h"
#include "zlog/zlo_record.h"
#include "zlog/zlog_rules.h"

namespace tobarine {

struct AdifToZlogOptions {
  ZlogOptions zlog;

  // For the CSV. Each text goes into remarks 1 or 2.
  L2hRemarks remarks;
  TimeMode csv_time = TimeMode::kNone;
  int comment_remarks = 1;
  int age_remarks = 1;
  int iota_remarks = 1;
  int tx_remarks = 1;
  bool whole_mhz = false;  // the frequency without its decimals
  bool write_qth = false;  // the record's QTH wins over the derived one
};

struct AdifToZlogJob {
  std::filesystem::path input;  // ADIF
  std::filesystem::path base;   // of the outputs' names: BASE.all, BASE.zlo, BASE.csv
  AdifToZlogOptions options;
  AdifReading reading = AdifReading::kAsk;

  static constexpr std::array<std::string_view, 3> kEndings = {".all", ".zlo", ".csv"};
  std::filesystem::path output(std::string_view extension) const;  // one of kEndings
  std::vector<std::filesystem::path> outputs() const;              // all three
};

// What a run leaves to the next one.
struct AdifToZlogState {
  L2hState csv;
  zlo::Record record{};  // in which the contacts of the binary log are built
};

// In the report `read` counts the contacts as scan_adif() does, `written` those in zLog's logs; the
// CSV also holds those that zLog has no band for. A contact whose date and time cannot be read, or
// whose points or TX number the binary log cannot hold, ends the run. Throws FileError,
// RecordError, UsageError.
ConversionReport run_adif_to_zlog(const AdifToZlogJob& job, const ConversionTables& tables,
                                  const CallTables& calls, const PlaceTables& places,
                                  AdifToZlogState& state, const RunContext& context);

}  // namespace tobarine
