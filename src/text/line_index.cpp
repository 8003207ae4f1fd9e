#include "text/line_index.h"

#include <algorithm>
#include <utility>

#include "text/cp932.h"
#include "text/encoding_guess.h"
#include "text/error.h"
#include "text/strings.h"

namespace tobarine {
namespace {

std::string lower_ascii(std::string_view text) {
  std::string result(text);
  for (char& c : result) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return result;
}

}  // namespace

LineIndex::LineIndex(std::filesystem::path file, const std::function<void(std::string_view)>& visit)
    : file_(std::move(file)) {
  LineReader lines(file_);
  EncodingGuess encoding;
  std::string_view line;
  while (lines.next(line)) {
    encoding.see(line);
    if (lines_ % kStep == 0) offsets_.push_back(lines.start());
    ++lines_;
    visit(line);
  }
  utf8_ = encoding.utf8();
}

std::string LineIndex::decode(std::string_view bytes) const {
  if (!utf8_) return from_cp932(bytes);
  if (bytes.starts_with(kUtf8Mark)) bytes.remove_prefix(kUtf8Mark.size());
  std::string text;
  copy_utf8_escaping_invalid(bytes, text);
  return text;
}

std::string LineIndex::line(std::size_t number) const {
  if (number < cached_from_ || number - cached_from_ >= cached_.size()) {
    const std::size_t step = number / kStep;
    LineReader lines(file_, offsets_[step]);
    cached_.clear();
    cached_from_ = step * kStep;
    std::string_view line;
    while (cached_.size() < kStep && lines.next(line)) cached_.push_back(decode(line));
  }
  const std::size_t at = number - cached_from_;
  return at < cached_.size() ? cached_[at] : std::string();  // the file may have become shorter
}

std::size_t LineIndex::find(std::string_view text, std::size_t from) const {
  if (from >= lines_) return lines_;
  const std::string wanted = lower_ascii(text);
  const std::size_t step = from / kStep;
  LineReader lines(file_, offsets_[step]);
  std::string_view line;
  for (std::size_t number = step * kStep; number < lines_ && lines.next(line); ++number) {
    if (number >= from && contains(lower_ascii(decode(line)), wanted)) return number;
  }
  return lines_;
}

}  // namespace tobarine
