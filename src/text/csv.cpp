#include "text/csv.h"

#include "text/cp932.h"
#include "text/error.h"

namespace tobarine {

CsvReader::CsvReader(const std::filesystem::path& path, bool utf8) : bytes_(path), utf8_(utf8) {
  if (utf8_) bytes_.skip_utf8_mark();
}

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
    } else if (!(utf8_ ? copy_utf8_char(at, end, out) : decode_cp932_char(at, end, out))) {
      ++invalid_bytes_;
    }
  };
  // The character at `at` (of up to four bytes) and the one behind it decide what comes next.
  const auto is_short = [&] { return end - at < 5 && !complete; };
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
    if (ends_.size() < kMostFields) ends_.push_back(static_cast<std::size_t>(out - values_.data()));
  }
  length_ = static_cast<std::size_t>(at - window.data());
  return true;
}

// More bytes behind the window, as ByteReader::fill(). A record that is too long is nearly always
// one whose quotes do not close.
bool CsvReader::fill() {
  if (line_ends_ > 0 && bytes_.window().size() >= ByteReader::kLongestLine) {
    throw RecordError(bytes_.file().path(), bytes_.line() + 1,
                      "引用符 (\") が閉じていないので、後ろの行がすべて一つの欄になります。"
                      "この行の引用符を直して下さい");
  }
  return bytes_.fill();
}

bool CsvReader::next(std::vector<std::string_view>& fields) {
  bool complete = false;
  while (!parse(bytes_.window(), complete)) complete = !fill();
  if (bytes_.window().empty()) return false;
  record_ = bytes_.window().substr(0, length_);
  bytes_.consume(length_);
  first_line_ = bytes_.line() + 1;
  const bool ends_in_quotes = unclosed_quote_ && record_.ends_with('\n');
  bytes_.count_lines(line_ends_ + (ends_in_quotes ? 0 : 1));
  fields.clear();
  std::size_t begin = 0;
  for (const std::size_t field_end : ends_) {
    fields.emplace_back(values_.data() + begin, field_end - begin);
    begin = field_end;
  }
  return true;
}

}  // namespace tobarine
