// What zLog's two kinds of logs, text (.ALL) and binary (.ZLO), have in common for their readers.
#pragma once

#include <cstddef>
#include <string>

#include "rules/findings.h"
#include "text/input_file.h"

namespace tobarine {

// One contact as a log has it. Every field is UTF-8 text.
struct ZlogContact {
  std::string date;  // "yyyy/mm/dd"
  std::string time;  // "hh:mm"; the log does not tell whether in JST or UTC
  std::string call;
  std::string his_rst;  // report sent
  std::string my_rst;   // report received
  std::string band;     // MHz: "1.9" .. "5600", or "10G"
  std::string mode;     // "CW", "SSB", "FM", "AM", "RTY", "Other"
  std::string memo;     // may hold the frequency in kHz, in parentheses

  std::string oddity;  // what the reader found odd, for the report
};

// Hands out a log's contacts one at a time.
class ZlogReader {
 public:
  virtual ~ZlogReader() = default;

  // Replaces all fields of the contact; false at the end. Throws FileError; RecordError for what
  // ends the reading.
  virtual bool next(ZlogContact& contact, FindingLog& findings) = 0;

  virtual std::size_t number() const = 0;     // line or record of the last contact, from 1
  virtual const InputFile& file() const = 0;  // for progress
};

}  // namespace tobarine
