#include "text/line_index.h"

#include <algorithm>
#include <utility>

#include "text/cp932.h"
#include "text/encoding_guess.h"
#include "text/error.h"
#include "text/strings.h"
#include "text/utf8.h"

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

// Whether CP932 has the character in one form only; some stand at two places.
bool has_one_form(std::string_view character) {
  int forms = 0;
  for (int lead = 0x81; lead <= 0xFC; ++lead) {
    for (int trail = 0x40; trail <= 0xFC; ++trail) {
      const char pair[] = {static_cast<char>(lead), static_cast<char>(trail)};
      const char* at = pair;
      char decoded[2 * kUtf8PerByte];
      char* out = decoded;
      if (decode_cp932_char(at, pair + 2, out) && at == pair + 2) {
        forms += std::string_view(decoded, static_cast<std::size_t>(out - decoded)) == character;
      }
    }
  }
  return forms <= 1;
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

std::string LineIndex::block(std::size_t from_step, std::size_t to_step) const {
  const std::uint64_t end = to_step < offsets_.size() ? offsets_[to_step] : end_;
  std::string bytes(static_cast<std::size_t>(end - offsets_[from_step]), '\0');
  InputFile file(file_, offsets_[from_step]);
  bytes.resize(file.read(bytes.data(), bytes.size()));
  return bytes;
}

LineIndex::Wanted LineIndex::wanted(std::string_view text) const {
  Wanted result{lower_ascii(std::string(text)), {}};
  if (utf8_ || is_ascii(text)) {
    result.bytes = result.text;
    return result;
  }
  for (std::string_view rest = text; !rest.empty();) {
    const std::string_view character = left_chars(rest, 1);
    if (character.size() > 1 && !has_one_form(character)) return result;
    rest.remove_prefix(character.size());
  }
  if (encode_cp932(text, result.bytes) > 0) result.bytes.clear();
  result.bytes = lower_ascii(std::move(result.bytes));
  return result;
}

// The first or last line of a block from `from` on and in front of `before`, counted in the block.
// Bytes are compared first, because that is fast: what looks alike may still be half of one
// character and half of the next, so the line itself decides.
std::optional<std::size_t> LineIndex::find_in(const std::string& block, const Wanted& wanted,
                                              std::size_t from, std::size_t before,
                                              bool last) const {
  const bool decoded = wanted.bytes.empty();
  const std::string lower = lower_ascii(decoded ? decode(block) : block);
  const std::string& needle = decoded ? wanted.text : wanted.bytes;
  std::optional<std::size_t> found;
  std::size_t start = line_start(lower, from);  // of line `from`, which moves on
  const std::size_t end = line_start(lower, before);
  for (std::size_t at = lower.find(needle, start); at < end; at = lower.find(needle, start)) {
    const std::string_view passed = std::string_view(lower).substr(start, at - start);
    from += static_cast<std::size_t>(std::ranges::count(passed, '\n'));
    start += passed.rfind('\n') + 1;  // 0 when there is none
    const std::size_t next = std::min(lower.find('\n', at), end - 1) + 1;
    const auto line = [&] { return std::string_view(block).substr(start, next - start); };
    if (decoded || contains(lower_ascii(decode(line())), wanted.text)) {
      found = from;
      if (!last) return found;
    }
    start = next;
    ++from;
  }
  return found;
}

std::size_t LineIndex::find(std::string_view text, std::size_t from) const {
  const Wanted what = wanted(text);
  for (std::size_t step = from / kStep; from < lines_ && step < offsets_.size();) {
    const auto behind = std::ranges::upper_bound(offsets_, offsets_[step] + kBlockBytes);
    const auto next = std::max(step + 1, static_cast<std::size_t>(behind - offsets_.begin()));
    const std::size_t first = step * kStep;
    const auto found = find_in(block(step, next), what, from > first ? from - first : 0,
                               (next - step) * kStep, false);
    if (found) return std::min(first + *found, lines_);
    step = next;
  }
  return lines_;
}

std::size_t LineIndex::find_last(std::string_view text, std::size_t before) const {
  const Wanted what = wanted(text);
  before = std::min(before, lines_);
  for (std::size_t next = (before + kStep - 1) / kStep; next > 0;) {
    const std::uint64_t end = offsets_[next - 1];
    const auto begin = std::ranges::lower_bound(offsets_, end - std::min(end, kBlockBytes));
    const auto step = static_cast<std::size_t>(begin - offsets_.begin());
    const std::size_t first = step * kStep;
    if (const auto found = find_in(block(step, next), what, 0, before - first, true)) {
      return first + *found;
    }
    next = step;
  }
  return lines_;
}

}  // namespace tobarine
