// zLog's contacts on their way to the ADIF writers: the log goes into the intermediate file as a
// whole, which is then read back contact by contact.
#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "convert/run.h"
#include "hamlog/contact_reader.h"
#include "text/csv.h"
#include "zlog/zlog_reader.h"

namespace tobarine {

// Which lines or records of the log the rows of the intermediate file come from.
class RowNumbers {
 public:
  void add(std::size_t number);                 // ascending
  std::size_t after(std::size_t number) const;  // the next row's
 private:
  std::vector<bool> has_row_;
};

struct IntermediateFile {
  RowNumbers numbers;
  std::optional<std::string> stopped_by;  // why the log ended early
};

// Reads the whole log and replaces the intermediate file. `zone`: "J" or "U". Throws FileError.
IntermediateFile write_intermediate(ZlogReader& log, char zone, const std::filesystem::path& path,
                                    const RunContext& context, FindingLog& findings);

// The call is put together again: the portable part in front of the home call where "$DX" marks it,
// else behind; the mark is taken out of the remarks. line() is the log's line or record.
class IntermediateReader : public ContactReader {
 public:
  IntermediateReader(const std::filesystem::path& path, RowNumbers numbers)
      : rows_(path), numbers_(std::move(numbers)) {}
  bool next(QsoRecord& record, FindingLog& findings) override;
  std::size_t line() const override { return number_; }
  Done done() const override { return done_of(rows_.file()); }

 private:
  CsvReader rows_;
  RowNumbers numbers_;
  std::size_t number_ = 0;
  std::vector<std::string_view> fields_;
  std::string call_;
};

}  // namespace tobarine
