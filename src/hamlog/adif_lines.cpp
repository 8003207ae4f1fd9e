#include "hamlog/adif_lines.h"

#include "text/strings.h"

namespace tobarine {

bool is_tag_at(std::string_view line, std::size_t at, std::string_view tag) {
  if (line.size() - at < tag.size()) return false;
  const bool may_be = ((line[at + 1] ^ tag[1]) & ~0x20) == 0;
  return may_be && equal_ignoring_case(line.substr(at, tag.size()), tag);
}

bool has_tag(std::string_view text, std::string_view tag) {
  for (std::size_t at = text.find('<'); at != std::string_view::npos; at = text.find('<', at + 1)) {
    if (is_tag_at(text, at, tag)) return true;
  }
  return false;
}

bool AdifLines::ends_here(bool has_header_end, bool has_record_end) {
  const bool marked = in_header_ ? has_header_end : has_record_end;
  ++lines_;
  cut_ = !marked && lines_ == (in_header_ ? kHeaderLines : kRecordLines);
  if (!marked && !cut_) return false;
  in_header_ = false;
  lines_ = 0;
  return true;
}

}  // namespace tobarine
