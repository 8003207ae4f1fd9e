#include "text/csv.h"

#include <algorithm>

#include "text/cp932.h"

namespace tobarine {

// The length of the record at the start of the window, its line end included. The whole record then
// stands in the window.
std::size_t CsvReader::find_record_end() {
  enum class State { kFieldStart, kPlain, kQuoted };
  State state = State::kFieldStart;
  std::size_t i = 0;
  unclosed_quote_ = false;
  for (;; ++i) {
    if (i == bytes_.window().size() && !bytes_.fill()) break;
    const char c = bytes_.window()[i];
    if (state == State::kQuoted) {
      if (c != '"') continue;
      const bool more = i + 1 < bytes_.window().size() || bytes_.fill();
      if (more && bytes_.window()[i + 1] == '"') {
        ++i;
      } else {
        state = State::kPlain;
      }
    } else if (c == '\n') {
      return i + 1;
    } else if (c == ',') {
      state = State::kFieldStart;
    } else {
      state = c == '"' && state == State::kFieldStart ? State::kQuoted : State::kPlain;
    }
  }
  unclosed_quote_ = state == State::kQuoted;
  return bytes_.window().size();
}

void CsvReader::split(std::vector<std::string_view>& fields) {
  values_.clear();
  ends_.clear();
  const std::size_t size = text_.size();
  std::size_t i = 0;
  for (;;) {
    if (i < size && text_[i] == '"') {
      for (++i; i < size; ++i) {
        if (text_[i] == '"') {
          if (i + 1 == size || text_[i + 1] != '"') break;
          ++i;
        }
        values_.push_back(text_[i]);
      }
      if (i < size) ++i;  // the closing quote
    }
    const std::size_t comma = std::min(text_.find(',', i), size);
    values_.append(text_, i, comma - i);
    ends_.push_back(values_.size());
    if (comma == size) break;
    i = comma + 1;
  }
  fields.clear();
  std::size_t begin = 0;
  for (const std::size_t end : ends_) {
    fields.emplace_back(values_.data() + begin, end - begin);
    begin = end;
  }
}

bool CsvReader::next(std::vector<std::string_view>& fields) {
  const std::size_t length = find_record_end();
  if (length == 0) return false;
  std::string_view record = bytes_.window().substr(0, length);
  first_line_ = bytes_.line() + 1;
  if (record.back() == '\n') {
    record.remove_suffix(1);
    if (!record.empty() && record.back() == '\r') record.remove_suffix(1);
  }
  text_.clear();
  invalid_bytes_ = decode_cp932(record, text_);
  bytes_.count_line();
  for (const char c : record) {
    if (c == '\n') bytes_.count_line();
  }
  bytes_.consume(length);
  split(fields);
  return true;
}

}  // namespace tobarine
