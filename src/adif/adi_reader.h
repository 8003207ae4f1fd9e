// ADI, the ADIF standard's text form, read to the letter: tags in any case on any number of lines,
// values by their lengths, records up to <EOR>.
//
// Lengths lie in real files (counted in characters, too short, too long), tags lack their "<" or
// their length, records their <EOR>. Where a length does not end at white space or the next tag,
// the reading that does is taken; the next tag is never swallowed; what was repaired, and every
// text that belongs to no field, is reported. Blanks around a value are not part of it.
#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "log/contact_stream.h"
#include "text/input_file.h"

namespace tobarine {

// What one look at a whole ADI file tells.
struct AdiForm {
  std::uint64_t begin = 0;  // the byte where the records begin, behind the header
  bool utf8 = false;        // else CP932
  bool maybe_utf8 = false;  // has characters that are valid in both, and is read as CP932
  bool has_tags = false;    // has a CALL or <EOH>: it is ADIF
  bool blank = true;        // nothing but blanks
};

// Throws FileError (UTF-16 among the reasons), and RecordError for a megabyte without a tag.
AdiForm look_at_adi(const std::filesystem::path& path);

class AdiReader : public ContactSource {
 public:
  // Looks at the file first and reports its encoding. Throws FileError when it is no ADIF.
  AdiReader(const std::filesystem::path& path, FindingLog& findings);

  // A record without any field is no contact; its text is reported. A second CALL in a record, and
  // the end of the file, end the record as <EOR> does, and are reported. RecordError: a field or
  // record longer than a megabyte.
  bool next(Contact& contact, FindingLog& findings) override;
  Done done() const override { return {bytes_.consumed(), bytes_.file().size()}; }

 private:
  struct Tag {
    std::string_view name;
    std::optional<std::size_t> length;
    std::size_t size = 0;  // from "<" to behind ">"; 0: no tag
    bool is(std::string_view mark) const;
  };
  struct Value {
    std::size_t size;  // bytes, from behind the tag
    bool repaired;
  };
  static Tag tag_at(std::string_view text);

  std::string_view window() const { return bytes_.window(); }
  bool reach(std::size_t bytes);           // fills the window up to so many bytes
  std::size_t find_tag(std::size_t from);  // in the window; its end when there is none
  Value measure(std::size_t from, std::size_t length);
  bool is_counted_otherwise(std::string_view value, std::size_t length) const;
  void consume(std::size_t bytes);
  void skip_text(Contact& contact, FindingLog& findings);
  void take_field(const Tag& tag, Contact& contact, FindingLog& findings);
  void take_headless_field(std::string_view text, Contact& contact, FindingLog& findings);
  void put(std::string_view name, std::string_view bytes, Contact& contact, FindingLog& findings);
  std::string_view decoded(std::string_view bytes, bool& damaged);
  void report_text(std::string_view text, const Contact& contact, FindingLog& findings);

  AdiForm form_;
  ByteReader bytes_;
  std::size_t line_ = 1;  // of the next byte
  std::size_t record_size_ = 0;
  std::string lost_;  // text of the record that belongs to no field
  std::string text_;  // scratch
  std::string name_;
};

}  // namespace tobarine
