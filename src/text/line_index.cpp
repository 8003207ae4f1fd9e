#include "text/line_index.h"

#include <algorithm>
#include <utility>

#include "text/cp932.h"
#include "text/encoding_guess.h"
#include "text/error.h"
#include "text/strings.h"

namespace tobarine {
namespace {

std::string lower_ascii(std::string text) {
  for (char& c : text) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return text;
}

// Where line `line` of a block of lines begins; the block's end when it has fewer.
std::size_t line_start(std::string_view block, std::size_t line) {
  std::size_t at = 0;
  for (; line > 0 && at < block.size(); --line) {
    const std::size_t end = block.find('\n', at);
    at = end == std::string_view::npos ? block.size() : end + 1;
  }
  return at;
}

std::size_t line_at(std::string_view block, std::size_t position) {
  return static_cast<std::size_t>(std::ranges::count(block.substr(0, position), '\n'));
}

constexpr std::uint64_t kBlockBytes = std::uint64_t{1} << 20;  // searched at once

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
  end_ = lines.file().bytes_read();
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

// The lines of these steps, to be searched.
std::string LineIndex::lower_block(std::size_t from_step, std::size_t to_step) const {
  const std::uint64_t end = to_step < offsets_.size() ? offsets_[to_step] : end_;
  std::string bytes(static_cast<std::size_t>(end - offsets_[from_step]), '\0');
  InputFile file(file_, offsets_[from_step]);
  bytes.resize(file.read(bytes.data(), bytes.size()));
  return lower_ascii(decode(bytes));
}

std::size_t LineIndex::find(std::string_view text, std::size_t from) const {
  const std::string wanted = lower_ascii(std::string(text));
  for (std::size_t step = from / kStep; from < lines_ && step < offsets_.size();) {
    const auto behind = std::ranges::upper_bound(offsets_, offsets_[step] + kBlockBytes);
    const auto next = std::max(step + 1, static_cast<std::size_t>(behind - offsets_.begin()));
    const std::string block = lower_block(step, next);
    const std::size_t first = step * kStep;
    const std::size_t found =
        block.find(wanted, line_start(block, from > first ? from - first : 0));
    if (found != std::string::npos) return std::min(first + line_at(block, found), lines_);
    step = next;
  }
  return lines_;
}

std::size_t LineIndex::find_last(std::string_view text, std::size_t before) const {
  const std::string wanted = lower_ascii(std::string(text));
  before = std::min(before, lines_);
  for (std::size_t next = (before + kStep - 1) / kStep; next > 0;) {
    const std::uint64_t end = offsets_[next - 1];
    const auto begin = std::ranges::lower_bound(offsets_, end - std::min(end, kBlockBytes));
    const auto step = static_cast<std::size_t>(begin - offsets_.begin());
    const std::string block = lower_block(step, next);
    const std::size_t limit = line_start(block, before - step * kStep);
    std::size_t last = std::string::npos;
    for (std::size_t at = block.find(wanted); at < limit; at = block.find(wanted, at + 1))
      last = at;
    if (last != std::string::npos) return step * kStep + line_at(block, last);
    next = step;
  }
  return lines_;
}

}  // namespace tobarine
