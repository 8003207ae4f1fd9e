#include "text/csv.h"

#include "text/cp932.h"

namespace tobarine {

// Parses the record at the start of the window. False when the window ends before the record is
// sure to, and the file does not (`complete`); then nothing counts.
// NOLINTNEXTLINE(readability-function-cognitive-complexity): one pass, for speed
bool CsvReader::parse(std::string_view window, bool complete) {
  if (values_.size() < window.size() * kUtf8PerByte) values_.resize(window.size() * kUtf8PerByte);
  ends_.clear();
  invalid_bytes_ = 0;
  line_ends_ = 0;
  unclosed_quote_ = false;
  const char* at = window.data();
  const char* const end = at + window.size();
  char* out = values_.data();
  const auto copy_character = [&] {
    if (static_cast<unsigned char>(*at) < 0x80) {
      *out++ = *at++;
    } else if (!decode_cp932_char(at, end, out)) {
      ++invalid_bytes_;
    }
  };
  // The character at `at` and the one behind it decide what comes next.
  const auto is_short = [&] { return end - at < 2 && !complete; };
  for (bool more_fields = true; more_fields;) {
    if (is_short()) return false;
    if (at < end && *at == '"') {
      for (++at;;) {
        if (is_short()) return false;
        unclosed_quote_ = at == end;
        if (at == end) break;
        if (*at == '"') {
          ++at;
          if (at == end || *at != '"') break;
        }
        if (*at == '\n') ++line_ends_;
        copy_character();
      }
    }
    const char* const tail = at;
    while (at < end && *at != ',' && *at != '\n') {
      if (is_short()) return false;
      copy_character();
    }
    if (at == end && !complete) return false;
    more_fields = at < end && *at == ',';
    if (at < end && *at == '\n' && at > tail && at[-1] == '\r') --out;
    if (at < end) ++at;
    ends_.push_back(static_cast<std::size_t>(out - values_.data()));
  }
  length_ = static_cast<std::size_t>(at - window.data());
  return true;
}

bool CsvReader::next(std::vector<std::string_view>& fields) {
  bool complete = false;
  while (!parse(bytes_.window(), complete)) complete = !bytes_.fill();
  if (bytes_.window().empty()) return false;
  bytes_.consume(length_);
  first_line_ = bytes_.line() + 1;
  bytes_.count_lines(line_ends_ + 1);
  fields.clear();
  std::size_t begin = 0;
  for (const std::size_t field_end : ends_) {
    fields.emplace_back(values_.data() + begin, field_end - begin);
    begin = field_end;
  }
  return true;
}

}  // namespace tobarine
