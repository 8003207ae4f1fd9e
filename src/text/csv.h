// Comma-separated records, read with regard to double quotes.
//
// A field that begins with a double quote runs to its closing quote: commas and line ends inside
// belong to it, two double quotes inside are one, and text behind the closing quote is kept up to
// the comma. A double quote elsewhere is a character like any other. A record ends with CR LF or
// LF; a last record without a line end counts. Fields behind the first kMostFields are passed over.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "text/input_file.h"

namespace tobarine {

class CsvReader {
 public:
  static constexpr std::size_t kMostFields = 64;

  // The file is CP932, or UTF-8 (a mark at its beginning is passed over).
  explicit CsvReader(const std::filesystem::path& path, bool utf8 = false);

  // The next record's fields as UTF-8 without their quotes; false at the end of the file. The views
  // are valid until the next call. Throws FileError; RecordError for a record that is too long,
  // naming the line on which it begins.
  bool next(std::vector<std::string_view>& fields);

  // The last record's bytes as they stand in the file, until the next call.
  std::string_view bytes() const { return record_; }

  std::size_t line() const { return first_line_; }  // line on which the last record begins, from 1
  std::size_t last_line() const { return bytes_.line(); }       // line on which it ends
  std::size_t invalid_bytes() const { return invalid_bytes_; }  // in the last record
  bool unclosed_quote() const { return unclosed_quote_; }  // the last record ran to the file's end
  bool spans_lines() const { return line_ends_ > 0; }      // its quotes hold line ends
  const InputFile& file() const { return bytes_.file(); }

 private:
  bool parse(std::string_view window, bool complete);
  bool fill();

  ByteReader bytes_;
  bool utf8_;
  std::string_view record_;
  std::string values_;             // the record's fields as UTF-8, one behind the other
  std::vector<std::size_t> ends_;  // where each field ends in values_
  std::size_t length_ = 0;         // bytes of the record, its line end included
  std::size_t line_ends_ = 0;      // inside the record's quotes
  std::size_t first_line_ = 0;
  std::size_t invalid_bytes_ = 0;
  bool unclosed_quote_ = false;
};

}  // namespace tobarine
