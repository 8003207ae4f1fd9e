// Counts the contacts of an ADIF file as the format has them, by tags and the lengths of their
// values, and tells what the tolerant reading (adif_reader.h) will make of each: it goes by lines,
// and a file laid out in another way loses contacts in it.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "hamlog/adif_lines.h"
#include "rules/findings.h"

namespace tobarine {

struct AdifLayout {
  std::size_t contacts = 0;   // CALL tags outside header and values
  std::size_t in_header = 0;  // lost: they stand in lines that are passed over as header
  std::size_t shared = 0;     // lost: a later contact is read as part of the same record
  std::size_t hurt = 0;       // the lost ones, and those torn apart or mixed with another's tags
  std::size_t no_call = 0;    // records of the tolerant reading that hold no contact
  bool header_ended = false;  // <EOH> was found where it is looked for
  bool lone_cr = false;       // a CR stands inside a line
};

// Memory does not grow with the file. Of values that go on behind the end of a line, what stands on
// the following lines counts as if it were outside a value.
class AdifCensus {
 public:
  // Every lost contact, and every record that is none, is reported.
  explicit AdifCensus(FindingLog& findings) : findings_(findings) {}

  void see(std::string_view line);  // every line, in order
  void end();                       // after the last one

  const AdifLayout& layout() const { return layout_; }

  // Lines with a CALL tag, wherever it stands in them.
  std::size_t call_lines() const { return call_lines_; }
  bool has_header_end() const { return has_header_end_; }  // an <EOH> before the first CALL tag

 private:
  struct Place {
    std::size_t line = 0;
    std::string call;
  };
  void take_tags(std::string_view line);
  std::size_t take_tag(std::string_view line, std::size_t tag);
  void begin_or_go_on();
  void take_call(std::string_view value);
  void lose_in_header();
  void hurt_record();
  void close_record();
  void close_header();
  void close_lines();

  FindingLog& findings_;
  AdifLayout layout_;
  AdifLines lines_;
  std::size_t line_ = 0;
  std::size_t call_lines_ = 0;
  bool has_header_end_ = false;
  bool line_has_call_ = false;
  bool line_has_header_end_ = false;
  bool line_has_record_end_ = false;

  // The lines that the tolerant reading takes together, as far as they have come.
  std::size_t part_ = 0;            // their number
  std::size_t part_line_ = 1;       // where they begin
  bool part_blank_ = true;          // nothing but blanks yet
  bool part_used_ = false;          // tags of a record stand there
  std::size_t part_whole_ = 0;      // contacts that are still unhurt, of records that have ended
  std::optional<Place> part_call_;  // the last contact in it

  // The record of the format, from its first tag to its end mark.
  bool open_ = false;
  bool record_has_call_ = false;
  bool record_hurt_ = false;
  bool others_there_ = false;         // other tags stand before it in its lines
  std::size_t record_part_ = 0;       // where its last tag stands
  std::size_t record_whole_ = 0;      // its contacts that are still unhurt
  std::optional<Place> header_call_;  // a contact in the header's lines, unless <EOH> comes
};

}  // namespace tobarine
