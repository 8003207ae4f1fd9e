// What every reader of the way to ADIF hands to the rules: Hamlog's columns as a contact.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "rules/findings.h"
#include "rules/qso_record.h"
#include "text/input_file.h"

namespace tobarine {

// Hands out a log's contacts one at a time.
class ContactReader {
 public:
  virtual ~ContactReader() = default;

  // Fills the record as fill_record() does. False at the end. Throws FileError; RecordError for a
  // line with too few columns, which ends the reading.
  virtual bool next(QsoRecord& record, FindingLog& findings) = 0;

  virtual std::size_t line() const = 0;  // of the last contact in the user's log, from 1

  // How far the reading is, in bytes or records.
  struct Done {
    std::uint64_t part;
    std::uint64_t whole;
  };
  virtual Done done() const = 0;

 protected:
  static Done done_of(const InputFile& file) { return {file.bytes_read(), file.size()}; }
};

// Fills the source fields of the record from Hamlog's first fourteen columns (see hamlog_csv.h) and
// clears all others, and sets the forms that follow directly from a column: `qso_date` (yyyymmdd: a
// two-digit year up to 30 is 20xx; empty when there is no date), `time_on` (the first two and last
// three characters of the time: hhmm and zone letter), `freq` trimmed and `qsl` cut to three
// characters, with two blanks added first.
void fill_record(std::span<const std::string_view> columns, QsoRecord& record);

}  // namespace tobarine
