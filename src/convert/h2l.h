// The runs from a Hamlog or zLog log to ADIF.
#pragma once

#include <filesystem>
#include <optional>

#include "convert/reference_tables.h"
#include "convert/report.h"
#include "convert/run.h"
#include "hamlog/h2l_rules.h"
#include "hamlog/hamlog_library.h"

namespace tobarine {

enum class H2lSource { kHamlogCsv, kHamlogHdb, kZlogAll, kZlogZlo };

// Whether a log is zLog's and takes the way over the intermediate file.
inline bool is_zlog(H2lSource source) {
  return source == H2lSource::kZlogAll || source == H2lSource::kZlogZlo;
}

struct H2lJob {
  std::filesystem::path input;
  std::filesystem::path output;
  H2lOptions options;
  H2lSource source = H2lSource::kHamlogCsv;

  HamlogLibrary* library = nullptr;  // for Hamlog's database only; the caller's

  // For zLog's logs only.
  std::optional<char> zlog_zone;       // 'J' (JST) or 'U' (UTC); nothing: as the log tells
  std::filesystem::path intermediate;  // written and left for the user to look at
};

// ADIF for Logger32 / for eQSL.cc. The output is created only when the input can be opened and is
// what it should be. Throws FileError (also for Hamlog's old layout), RecordError (first line),
// UsageError.
ConversionReport run_h2l(const H2lJob& job, const ConversionTables& tables, const CallTables& calls,
                         const RunContext& context);
ConversionReport run_eqsl(const H2lJob& job, const ConversionTables& tables,
                          const CallTables& calls, const RunContext& context);

}  // namespace tobarine
