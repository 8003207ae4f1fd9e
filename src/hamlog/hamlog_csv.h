// Hamlog's CSV (version 5.00 and later), read: one contact a line, no header line, CP932 (UTF-8 is
// read, too). Blank lines at the very end are no contacts.
//
// Columns, from 0: call, date yy/mm/dd, time hh:mm and zone letter, report sent, report received,
// frequency, mode, code, grid, QSL, name, QTH, remarks 1, remarks 2, one more that must be there
// and is not used. Columns behind are ignored.
#pragma once

#include <array>
#include <cstddef>
#include <filesystem>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "hamlog/contact_reader.h"
#include "text/csv.h"
#include "text/input_file.h"

namespace tobarine {

inline constexpr std::size_t kHamlogColumns = 15;

// Whether a file can be converted, from its first line. kOld: the layout before version 5.00;
// kHeadings, kRespelled: a spreadsheet has saved it, with a heading row or with dates of its own;
// kCrOnly: its lines end with CR alone.
enum class HamlogLayout { kNew, kOld, kHeadings, kRespelled, kCrOnly, kEmpty };

// "新", "旧", "見出しあり", "表計算", "CR だけの改行", "空".
std::string_view layout_name(HamlogLayout layout);

// What is wrong with a layout that cannot be converted and what to do, for people; empty when
// nothing is.
std::string_view layout_problem(HamlogLayout layout);

struct HamlogCsvInfo {
  HamlogLayout layout = HamlogLayout::kEmpty;
  bool utf8 = false;
  bool maybe_utf8 = false;  // has characters that are valid in both, and is read as CP932
};

// Reads no more of the file than it takes to know. Throws FileError (UTF-16, too); RecordError when
// the first line has no comma at all.
HamlogCsvInfo look_at_hamlog_csv(const std::filesystem::path& path);

// The same, and FileError for a layout that cannot be converted.
HamlogCsvInfo check_hamlog_csv(const std::filesystem::path& path);

// The number of lines without the blank ones at the very end. Throws FileError, RecordError.
std::size_t count_hamlog_lines(const std::filesystem::path& path);

// Every double quote is taken out of a line, then it is split at every comma: a comma inside quotes
// splits too and shifts the columns behind. This is how Hamlog's lines have always been read here;
// such lines are reported.
class HamlogLineReader : public ContactReader {
 public:
  HamlogLineReader(const std::filesystem::path& path, bool utf8);
  bool next(QsoRecord& record, FindingLog& findings) override;
  std::size_t line() const override { return lines_.line(); }
  Done done() const override { return done_of(lines_.file()); }

 private:
  struct Split {
    std::size_t columns = 0;  // no more than are kept
    std::size_t invalid_bytes = 0;
    std::size_t inner_quotes = 0;  // that do not enclose a column
    bool comma_in_quotes = false;
  };
  Split split(std::string_view line);

  LineReader lines_;
  bool utf8_;
  std::string text_;  // the columns, one behind the other
  std::array<std::string_view, kHamlogColumns> columns_;
};

// Reads with regard to quotes: a comma or line end inside quotes belongs to the field. The contacts
// that stand in such a field are reported, each with its line.
class HamlogRowReader : public ContactReader {
 public:
  HamlogRowReader(const std::filesystem::path& path, bool utf8) : rows_(path, utf8) {}
  bool next(QsoRecord& record, FindingLog& findings) override;
  std::size_t line() const override { return rows_.line(); }
  Done done() const override { return done_of(rows_.file()); }

 private:
  bool next_row();
  void report_lines_in_quotes(FindingLog& findings) const;

  CsvReader rows_;
  std::vector<std::string_view> columns_;
};

}  // namespace tobarine
