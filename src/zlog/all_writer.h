// zLog's text log (.ALL), written. See all_reader.h for the columns; between them stand the sent
// number (35-41), the received number (47-53), "-" for no multiplier (55, 61) and the points (77).
#pragma once

#include <cstddef>
#include <string>

#include "text/output_file.h"
#include "zlog/zlog_entry.h"

namespace tobarine {

class AllWriter {
 public:
  // Writes the header line. The file stays the caller's, who closes it.
  explicit AllWriter(OutputFile& file);

  // Returns the number of characters that CP932 lacks, written as "?". A value too long for its
  // column is cut; the memo, which is the last, never.
  std::size_t write(const ZlogEntry& entry);

 private:
  OutputFile& file_;
  std::string line_;
};

}  // namespace tobarine
