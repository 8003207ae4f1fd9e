// Hamlog's CSV (version 5.00 and later), read: one contact a line, no header line, CP932.
//
// Columns, from 0: call, date yy/mm/dd, time hh:mm and zone letter, report sent, report received,
// frequency, mode, code, grid, QSL, name, QTH, remarks 1, remarks 2, one more that must be there
// and is not used. Columns behind are ignored.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "hamlog/contact_reader.h"
#include "text/csv.h"
#include "text/input_file.h"

namespace tobarine {

inline constexpr std::size_t kHamlogColumns = 15;

// Whether a file can be converted, from its first line. kOld: the layout before version 5.00.
enum class HamlogLayout { kNew, kOld, kEmpty };

// Throws FileError; RecordError when the first line has no comma at all.
HamlogLayout hamlog_layout(const std::filesystem::path& path);

// The same, and FileError for the old layout.
void refuse_old_layout(const std::filesystem::path& path);

// Every double quote is taken out of a line, then it is split at every comma: a comma inside quotes
// splits too and shifts the columns behind. This is how Hamlog's lines have always been read here;
// such lines are reported.
class HamlogLineReader : public ContactReader {
 public:
  explicit HamlogLineReader(const std::filesystem::path& path) : lines_(path) {}
  bool next(QsoRecord& record, FindingLog& findings) override;
  std::size_t line() const override { return lines_.line(); }
  Done done() const override { return done_of(lines_.file()); }

 private:
  struct Split {
    std::size_t invalid_bytes = 0;
    bool inside_quotes = false;  // a comma inside quotes split the line
  };
  Split split(std::string_view line);

  LineReader lines_;
  std::string text_;               // the columns, one behind the other
  std::vector<const char*> ends_;  // where each column ends in text_
  std::vector<std::string_view> columns_;
};

// Reads with regard to quotes: a comma or line end inside quotes belongs to the field.
class HamlogRowReader : public ContactReader {
 public:
  explicit HamlogRowReader(const std::filesystem::path& path) : rows_(path) {}
  bool next(QsoRecord& record, FindingLog& findings) override;
  std::size_t line() const override { return rows_.line(); }
  Done done() const override { return done_of(rows_.file()); }

 private:
  CsvReader rows_;
  std::vector<std::string_view> columns_;
};

}  // namespace tobarine
