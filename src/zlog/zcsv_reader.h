// zLog's CSV, read. See zcsv_columns.h.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "rules/findings.h"
#include "text/csv.h"
#include "zlog/zcsv_columns.h"
#include "zlog/zlog_qso.h"

namespace tobarine {

class ZcsvReader {
 public:
  // Throws FileError, also when the file does not begin with the heading.
  explicit ZcsvReader(const std::filesystem::path& path);

  // Replaces all of the contact; false at the end. A contact that is odd, in another number of
  // fields than the heading's or without a zone (read as UTC) for one, is handed out and reported;
  // so are, once, columns that are unknown. Blank lines are no contacts. Throws FileError,
  // RecordError.
  bool next(ZlogQso& qso, FindingLog& findings);

  std::size_t number() const { return rows_.line(); }  // line on which the last row begins
  const InputFile& file() const { return rows_.file(); }

 private:
  void read(const zcsv::Column& column, std::string_view value, ZlogQso& qso);

  CsvReader rows_;
  std::vector<std::string_view> fields_;
  std::vector<const zcsv::Column*> columns_;  // of the file; nullptr: unknown
  std::string unknown_;                       // columns, until they have been reported
  std::string date_, time_, zone_;            // of the last row
};

}  // namespace tobarine
