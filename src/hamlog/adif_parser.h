// The tags of one ADIF record, as AdifRecordReader gathers its text, into a contact.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "rules/conversion_tables.h"
#include "rules/findings.h"
#include "rules/qso_record.h"

namespace tobarine {

// How the texts of a contact become Hamlog's two remarks.
struct L2hRemarks {
  bool write_state = false;
  int state_place = 2;  // 0: remarks 1, 1: remarks 2; anything else empties both remarks
  bool state_prefixed = false;
  std::string state_prefix = "WAS=";

  bool emptied() const { return write_state && state_place != 0 && state_place != 1; }
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
