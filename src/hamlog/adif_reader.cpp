#include "hamlog/adif_reader.h"

#include "text/cp932.h"
#include "text/encoding_guess.h"
#include "text/strings.h"
#include "text/utf8.h"

namespace tobarine {
namespace {

constexpr std::size_t kHeaderLines = 20;
constexpr std::size_t kRecordLines = 5;

// Whether a tag such as "<EOR>" stands in the text, in whatever case.
bool has_tag(std::string_view text, std::string_view tag) {
  for (std::size_t at = text.find('<'); at < text.size() && at + tag.size() <= text.size();
       at = text.find('<', at + 1)) {
    const bool may_be = ((text[at + 1] ^ tag[1]) & ~0x20) == 0;
    if (may_be && equal_ignoring_case(text.substr(at, tag.size()), tag)) return true;
  }
  return false;
}

}  // namespace

AdifFileInfo scan_adif(const std::filesystem::path& path) {
  LineReader lines(path);
  AdifFileInfo info;
  EncodingGuess encoding;
  bool blank = true;
  bool header_ends = false;
  std::string_view line;
  while (lines.next(line)) {
    if (lines.line() == 1) refuse_utf16(path, line);
    encoding.see(line);
    if (has_tag(line, "<CALL:")) ++info.contacts;
    blank = blank && is_blank(line);
    if (info.contacts == 0) header_ends = header_ends || has_tag(line, "<EOH>");
  }
  info.is_adif = blank || header_ends || info.contacts > 0;
  info.utf8 = encoding.utf8();
  info.maybe_utf8 = encoding.maybe_utf8();
  return info;
}

AdifRecordReader::AdifRecordReader(const std::filesystem::path& path, bool utf8)
    : lines_(path), utf8_(utf8) {
  std::string_view line;
  for (std::size_t i = 0; i < kHeaderLines && lines_.next(line); ++i) {
    if (has_tag(line, "<EOH>")) break;
  }
}

// Appends the next line as UTF-8; false at the end of the file.
bool AdifRecordReader::append_line(std::string& text) {
  std::string_view line;
  if (!lines_.next(line)) return false;
  if (!utf8_) {
    invalid_bytes_ += decode_cp932(line, text);
  } else if (is_valid_utf8(line)) {
    text.append(line);
  } else {
    invalid_bytes_ += copy_utf8_escaping_invalid(line, text);
  }
  return true;
}

bool AdifRecordReader::next(std::string& record) {
  for (;;) {
    record.clear();
    invalid_bytes_ = 0;
    cut_ = false;
    first_line_ = lines_.line() + 1;
    std::size_t count = 0;
    bool at_end = false;
    bool ended = false;
    while (count < kRecordLines && !ended) {
      const std::size_t before = record.size();
      if (!append_line(record)) {
        at_end = true;
        break;
      }
      ++count;
      ended = has_tag(std::string_view(record).substr(before), "<EOR>");
    }
    if (!is_blank(record)) {
      cut_ = !ended && !at_end;
      return true;
    }
    if (at_end) return false;
  }
}

}  // namespace tobarine
