// The contacts of an ADIF file, as the runs from ADIF take them.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>

#include "hamlog/adif_parser.h"
#include "hamlog/adif_reader.h"
#include "rules/findings.h"
#include "rules/qso_record.h"

namespace tobarine {

class AdifContacts {
 public:
  // Reads the file once to count the contacts and to tell its encoding, and reports what the user
  // should know of that. The tables stay the caller's. Throws FileError when the file is no ADIF.
  AdifContacts(const std::filesystem::path& path, const BandTable& bands, const ModeTable& modes,
               const L2hRemarks& remarks, FindingLog& findings);

  std::size_t count() const { return info_.contacts; }

  // Fills the record as AdifParser::parse() does; false at the end.
  bool next(QsoRecord& record, FindingLog& findings);

  std::size_t line() const { return reader_.line(); }  // where the last contact begins, from 1
  const InputFile& file() const { return reader_.file(); }

 private:
  AdifFileInfo info_;
  AdifRecordReader reader_;
  AdifParser parser_;
  std::string text_;
};

}  // namespace tobarine
