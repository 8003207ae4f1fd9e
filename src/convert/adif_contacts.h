// The contacts of an ADIF file, as the runs from ADIF take them.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>

#include "convert/adif_reading.h"
#include "convert/reference_tables.h"
#include "convert/run.h"
#include "hamlog/adif_parser.h"
#include "hamlog/adif_reader.h"
#include "rules/duplicates.h"
#include "rules/findings.h"
#include "rules/qso_record.h"

namespace tobarine {

struct AdifInput {
  std::filesystem::path path;
  L2hRemarks remarks;
  AdifUse use;
  AdifReading reading = AdifReading::kAsk;
};

class AdifContacts {
 public:
  // Reads the file once to count the contacts and to tell its encoding, and reports what the user
  // should know of that and of contacts that will be lost. The tables stay the caller's. Throws
  // FileError when the file is no ADIF, or would be hurt and the user has not agreed;
  // StopRequested.
  AdifContacts(const AdifInput& input, const ConversionTables& tables, const RunContext& context,
               FindingLog& findings);

  std::size_t count() const { return info_.contacts; }

  // Fills the record as AdifParser::parse() does; false at the end. Throws StopRequested.
  bool next(QsoRecord& record, FindingLog& findings);

  std::size_t line() const { return reader_.line(); }  // where the last contact begins, from 1

 private:
  void report_doubts(const QsoRecord& record, FindingLog& findings);

  AdifFileInfo info_;
  AdifRecordReader reader_;
  AdifParser parser_;
  ReadingPace pace_;
  Duplicates duplicates_;
  std::string text_;
  std::string call_;  // of the last contact, with its band and mode, in upper case
  std::string band_;
  std::string mode_;
};

}  // namespace tobarine
