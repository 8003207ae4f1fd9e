// ADIF as Logger32 and N1MM write it, read tolerantly: the lengths of tags are not used, a value is
// everything from the tag's ">" to the next "<". A file is CP932, or UTF-8 when it says so or can
// be nothing else.
#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>

#include "hamlog/adif_census.h"
#include "rules/findings.h"
#include "text/input_file.h"

namespace tobarine {

struct AdifFileInfo {
  std::size_t contacts = 0;  // lines with a CALL tag: several contacts on one line count once
  bool maybe_utf8 = false;   // has characters that are valid in both, and is read as CP932
  bool is_adif = false;      // has a contact, or the end of a header, or nothing at all
  bool utf8 = false;         // see EncodingGuess
  AdifLayout layout;         // what the tolerant reading will lose
};

// Called for every line that is read; may throw to end the reading.
using ReadProgress = std::function<void(const InputFile&)>;

// Reads the whole file once, before it is converted, and reports the contacts that AdifRecordReader
// will lose. Throws FileError, RecordError.
AdifFileInfo scan_adif(const std::filesystem::path& path, FindingLog& findings,
                       const ReadProgress& progress = {});
AdifFileInfo scan_adif(const std::filesystem::path& path);  // reports nothing

// Hands out the text of one record at a time.
class AdifRecordReader {
 public:
  // Skips the header: lines up to the one with <EOH>, but at most 20, so that a file without a
  // header loses its first 20 lines.
  AdifRecordReader(const std::filesystem::path& path, bool utf8);

  // The next record's lines joined without separator: lines up to the one with <EOR>, but at most
  // 5, so that a longer record is cut and its rest begins the next. Blank texts are passed over.
  // False at the end of the file; a last record without <EOR> counts. `record` is UTF-8.
  bool next(std::string& record);

  std::size_t line() const { return first_line_; }  // where the last record begins, from 1
  bool cut() const { return cut_; }                 // the last record was cut at 5 lines
  std::size_t invalid_bytes() const { return invalid_bytes_; }  // in the last record
  const InputFile& file() const { return lines_.file(); }

 private:
  bool append_line(std::string& text);

  LineReader lines_;
  AdifLines parts_;
  bool utf8_;
  std::size_t first_line_ = 0;
  std::size_t invalid_bytes_ = 0;
  bool cut_ = false;
};

}  // namespace tobarine
