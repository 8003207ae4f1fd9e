#include "hamlog/adif_reader.h"

#include "text/cp932.h"
#include "text/encoding_guess.h"
#include "text/strings.h"
#include "text/utf8.h"

namespace tobarine {

AdifFileInfo scan_adif(const std::filesystem::path& path, FindingLog& findings,
                       const ReadProgress& progress) {
  LineReader lines(path);
  AdifFileInfo info;
  AdifCensus census(findings);
  EncodingGuess encoding;
  bool blank = true;
  std::string_view line;
  while (lines.next(line)) {
    if (lines.line() == 1) refuse_utf16(path, line);
    if (progress) progress(lines.file());
    encoding.see(line);
    blank = blank && is_blank(line);
    census.see(line);
  }
  census.end();
  info.contacts = census.call_lines();
  info.layout = census.layout();
  info.is_adif = blank || census.has_header_end() || info.contacts > 0;
  info.utf8 = encoding.utf8();
  info.maybe_utf8 = encoding.maybe_utf8();
  return info;
}

AdifFileInfo scan_adif(const std::filesystem::path& path) {
  FindingLog unheard;
  return scan_adif(path, unheard);
}

AdifRecordReader::AdifRecordReader(const std::filesystem::path& path, bool utf8)
    : lines_(path), utf8_(utf8) {
  std::string_view line;
  while (parts_.in_header() && lines_.next(line)) parts_.ends_here(has_tag(line, "<EOH>"), false);
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
  bool more = true;
  while (more) {
    record.clear();
    invalid_bytes_ = 0;
    first_line_ = lines_.line() + 1;
    bool ended = false;
    while (!ended) {
      const std::size_t before = record.size();
      more = append_line(record);
      if (!more) break;
      ended = parts_.ends_here(false, has_tag(std::string_view(record).substr(before), "<EOR>"));
    }
    cut_ = ended && parts_.cut();
    if (!is_blank(record)) return true;
  }
  return false;
}

}  // namespace tobarine
