// ADIF as Logger32 and N1MM write it, read tolerantly: the lengths of tags are not used, a value is
// everything from the tag's ">" to the next "<". A file is CP932, or UTF-8 when it says so or can
// be nothing else.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <utility>

#include "rules/conversion_tables.h"
#include "rules/findings.h"
#include "rules/qso_record.h"
#include "text/input_file.h"

namespace tobarine {

struct AdifFileInfo {
  std::size_t contacts = 0;  // lines with a CALL tag: several contacts on one line count once
  bool maybe_utf8 = false;   // has characters that are valid in both, and is read as CP932
  bool is_adif = false;      // has a contact, or the end of a header, or nothing at all
  bool utf8 = false;         // begins with the UTF-8 mark, or is valid UTF-8 and not valid CP932
};

// Reads the whole file once. Throws FileError, RecordError.
AdifFileInfo scan_adif(const std::filesystem::path& path);

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
  bool utf8_;
  std::size_t first_line_ = 0;
  std::size_t invalid_bytes_ = 0;
  bool cut_ = false;
};

// How the texts of a contact become Hamlog's two remarks.
struct L2hRemarks {
  bool write_state = false;
  int state_place = 2;  // 0: remarks 1, 1: remarks 2; anything else empties both remarks
  bool state_prefixed = false;
  std::string state_prefix = "WAS=";
};

// Turns record texts into contacts.
class AdifParser {
 public:
  // The tables stay the caller's.
  AdifParser(const BandTable& bands, const ModeTable& modes, L2hRemarks remarks)
      : bands_(bands), modes_(modes), remarks_(std::move(remarks)) {}

  // Fills `record` from the text of one record. Call, date, time, reports, QSL_SENT and comment are
  // not reset before: a record that lacks one of those tags keeps the value of the record before
  // it. Tags are found anywhere in a field, so that MY_STATE counts as STATE; this is how such
  // files have always been read here.
  void parse(const std::string& text, std::size_t line, QsoRecord& record, FindingLog& findings);

 private:
  // A field of the record: the text between two "<".
  struct Field {
    std::string_view text;
    std::size_t value = 0;    // where the value begins, behind the first ">"; 0: there is none
    bool more_ends = false;   // there are more ">" behind
    bool odd_length = false;  // a date or time tag with an unusual length
    std::uint64_t tags = 0;   // bit n: the n-th tag of the tag table matches
  };
  std::uint64_t tags_at(std::string_view head, char behind);
  void read_fields(std::string_view text, QsoRecord& record);
  void read_field(QsoRecord& record);
  std::string_view field_value(bool counted_in_bytes);
  void set_field(std::size_t tag, QsoRecord& record);
  void cut_freq(std::string_view value, QsoRecord& record);
  void derive(std::uint64_t found, QsoRecord& record);
  void build_remarks(QsoRecord& record) const;
  void report(std::size_t line, const QsoRecord& record, FindingLog& findings) const;

  const BandTable& bands_;
  const ModeTable& modes_;
  L2hRemarks remarks_;
  Field field_;                  // the one being read
  std::uint64_t tags_seen_ = 0;  // of the record, as Field::tags
  bool mode_settled_ = true;     // the table changes the mode no more
  std::string odd_tag_;          // its first date or time tag with an unusual length
  std::string cut_value_;        // its frequency before it was cut
  std::string scratch_;
};

}  // namespace tobarine
