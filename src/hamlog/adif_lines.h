// How the tolerant reading divides an ADIF file by its lines: the header, then records.
#pragma once

#include <cstddef>
#include <string_view>

namespace tobarine {

// Whether a tag such as "<EOR>" or "<CALL:" begins at the byte `at`, in whatever case.
bool is_tag_at(std::string_view line, std::size_t at, std::string_view tag);

// Whether such a tag stands anywhere in the text.
bool has_tag(std::string_view text, std::string_view tag);

// The header reaches to the line with <EOH>, but at most 20 lines; a record to the line with <EOR>,
// but at most 5 lines.
class AdifLines {
 public:
  static constexpr std::size_t kHeaderLines = 20;
  static constexpr std::size_t kRecordLines = 5;

  // To be called for every line. True: it is the last one of the header or of its record.
  bool ends_here(bool has_header_end, bool has_record_end);

  bool in_header() const { return in_header_; }  // of the next line
  bool at_start() const { return lines_ == 0; }  // the next line begins a record or the header
  bool cut() const { return cut_; }              // what ended last had too many lines

 private:
  bool in_header_ = true;
  bool cut_ = false;
  std::size_t lines_ = 0;
};

}  // namespace tobarine
