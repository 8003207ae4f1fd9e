// The tags of one ADIF record, as AdifRecordReader gathers its text, into a contact.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "hamlog/adif_tags.h"
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

// What a run does with a contact beside what all runs do; the rest is lost and reported.
struct AdifUse {
  bool comment = false;
  bool qth = false;      // the record's own, not the one derived
  bool contest = false;  // numbers, operator, age and band
};

// Turns record texts into contacts.
class AdifParser {
 public:
  // The tables stay the caller's.
  AdifParser(const BandTable& bands, const ModeTable& modes, L2hRemarks remarks, AdifUse use)
      : bands_(bands), modes_(modes), remarks_(std::move(remarks)), use_(use) {}

  // Fills `record` from the text of one record. Call, date, time, reports, QSL_SENT and comment are
  // not reset before: a record that lacks one of those tags keeps the value of the record before
  // it. Tags are found anywhere in a field, so that MY_STATE counts as STATE; this is how such
  // files have always been read here.
  void parse(const std::string& text, std::size_t line, QsoRecord& record, FindingLog& findings);

  // The last record had a CALL tag of its own.
  bool has_call() const { return (own_seen_ & bit(kCall)) != 0; }

 private:
  // A field of the record: the text between two "<".
  struct Field {
    std::string_view text;
    std::size_t value = 0;   // where the value begins, behind the first ">"; 0: there is none
    bool more_ends = false;  // there are more ">" behind
    TagMatch match;
  };
  void read_fields(std::string_view text, QsoRecord& record);
  void read_field(QsoRecord& record);
  std::string_view field_value(bool counted_in_bytes);
  void set_field(std::size_t tag, QsoRecord& record);
  void set_qsl(std::size_t tag, std::string_view value, QsoRecord& record);
  void watch(std::size_t tag, std::string_view before, std::string_view value);
  void cut_freq(std::string_view value, QsoRecord& record);
  void derive(std::uint64_t found, QsoRecord& record);
  void build_remarks(QsoRecord& record) const;
  void report(std::size_t line, const QsoRecord& record, FindingLog& findings) const;
  void report_mode(std::size_t line, const QsoRecord& record, FindingLog& findings) const;
  void report_foreign(std::size_t line, const QsoRecord& record, FindingLog& findings) const;
  std::uint64_t foreign_that_count(const QsoRecord& record) const;

  const BandTable& bands_;
  const ModeTable& modes_;
  L2hRemarks remarks_;
  AdifUse use_;
  Field field_;                  // the one being read
  std::uint64_t tags_seen_ = 0;  // of the record, as TagMatch::tags
  std::uint64_t own_seen_ = 0;   // as TagMatch::own
  std::uint64_t foreign_ = 0;    // those whose value comes from a field of another name
  std::array<std::string_view, std::size(kTags)> foreign_fields_;  // that field
  std::string own_qsl_;       // the QSL marks as the record's own tags alone would have them
  bool mode_settled_ = true;  // the table changes the mode no more
  std::string odd_tag_;       // its first date or time tag with an unusual length
  std::string cut_value_;     // its frequency before it was cut
  std::string submode_;
  std::string not_carried_;  // what no column takes, as "TAG=value, ..."
  std::string scratch_;
};

}  // namespace tobarine
