// Hamlog's CSV, written: fifteen double-quoted columns a contact, CP932, CR LF.
#pragma once

#include <cstddef>

#include "hamlog/l2h_rules.h"
#include "text/output_file.h"

namespace tobarine {

// Appends one line to `buffer` (CP932). Hamlog's reader knows no escape, so double quotes inside a
// value are left out.
struct WrittenLine {
  std::size_t quotes_dropped = 0;
  std::size_t lacking = 0;    // characters that CP932 lacks, written as "?"
  std::size_t line_ends = 0;  // CR and LF in values, written as blanks
};
WrittenLine write_hamlog_line(const HamlogColumns& columns, std::string& buffer);

// Reports what a line lost in writing. `line` is the input's.
void report_written_line(const WrittenLine& written, std::size_t line, std::string_view call,
                         FindingLog& findings);

}  // namespace tobarine
