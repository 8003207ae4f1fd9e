// zLog's binary log (.ZLO), written. See zlo_record.h for the record.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "text/output_file.h"
#include "zlog/zlo_record.h"
#include "zlog/zlog_entry.h"

namespace tobarine {

class ZloWriter {
 public:
  // The file stays the caller's, who closes it. `record` is the buffer in which every record is
  // built: what an entry does not set keeps what the entry before put there, even that of an
  // earlier run. Both must outlive the writer.
  ZloWriter(OutputFile& file, zlo::Record& record) : file_(file), record_(record) {}

  // The first record of the file. Both texts may be empty; the length bytes are twice their
  // lengths, as those of operator and memo are. `zone`: 'U' (UTC) or 'J' (JST), of all times.
  std::size_t write_header(std::string_view station_call, std::string_view contest, char zone);

  // Entries hold a moment that is a date and time, texts of the code tables, and numbers that
  // zlo::stored_byte() takes. Both functions return the number of characters that CP932 lacks,
  // written as "?". A text too long for its area is cut.
  std::size_t write(const ZlogEntry& entry);

 private:
  void put(const zlo::Record& record);

  OutputFile& file_;
  zlo::Record& record_;
  std::string memo_;
};

}  // namespace tobarine
