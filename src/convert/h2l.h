// The runs from a Hamlog log to ADIF.
#pragma once

#include <filesystem>
#include <functional>
#include <string_view>

#include "convert/reference_tables.h"
#include "convert/report.h"
#include "hamlog/h2l_rules.h"

namespace tobarine {

// The input path up to and including its first ".", then the extension; a path without a dot gets
// "." and the extension. The first dot is meant, even when it stands in a folder's name: the output
// has always been found there. The path is made absolute first.
std::filesystem::path output_path(const std::filesystem::path& input, std::string_view extension);

// Throws UsageError when the output is the input, under whatever name.
void refuse_same_file(const std::filesystem::path& input, const std::filesystem::path& output);

// What a run asks of its surroundings. Both may be empty.
struct RunContext {
  std::function<void(double)> progress;  // called now and then with the done part, 0 .. 1
};

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
