#include "text/encoding_guess.h"

#include <algorithm>
#include <cstdint>

#include "text/cp932.h"
#include "text/error.h"
#include "text/utf8.h"

namespace tobarine {
namespace {

// Symbols, kana and the kanji of everyday use.
constexpr int kFirstCommon = 0x8140;
constexpr int kLastCommon = 0x9872;

std::uint8_t byte_at(std::string_view text, std::size_t at) {
  return at < text.size() ? static_cast<std::uint8_t>(text[at]) : 0;
}

bool is_common(int cp932) {
  return cp932 >= kFirstCommon && cp932 <= kLastCommon;
}

bool is_lower_case(std::uint8_t c) {
  return c >= 'a' && c <= 'z';
}

// Whether the character of `size` bytes at `at` in a valid UTF-8 line says that the line is no
// CP932, where its first byte would be a half-width kana (two bytes) or begin a rare kanji.
bool speaks_for_utf8(std::string_view line, std::size_t at, const Utf8Char& c, bool run_begins) {
  const std::uint8_t behind = byte_at(line, at + c.size);
  if (c.size == 2) {
    const bool is_latin_letter = c.code_point >= 0xC0 && c.code_point < 0x250;
    const std::uint8_t before = at > 0 ? byte_at(line, at - 1) : std::uint8_t{0};
    return is_latin_letter && (is_lower_case(before) || is_lower_case(behind));
  }
  if (c.size == 4) return true;
  const std::uint8_t last = byte_at(line, at + 2);
  // A run of CP932 that began here would be a rare kanji and a half-width kana.
  if (run_begins && last >= 0xA0) return true;
  // Or a rare kanji and a common one whose second byte is an ASCII letter.
  if (run_begins && behind >= 0x40 && behind <= 0x7E && is_common(last << 8 | behind)) return false;
  return is_common(cp932_from_unicode(c.code_point));
}

bool speaks_for_utf8(std::string_view line) {
  bool run_begins = true;
  for (std::size_t at = 0; at < line.size();) {
    const Utf8Char c = next_utf8(line.substr(at));
    if (c.size > 1 && speaks_for_utf8(line, at, c, run_begins)) return true;
    run_begins = c.size == 1;
    at += c.size;
  }
  return false;
}

}  // namespace

void EncodingGuess::see(std::string_view line) {
  if (first_) marked_ = line.starts_with(kUtf8Mark);
  first_ = false;
  if (is_ascii(line)) return;
  ascii_ = false;
  valid_utf8_ = valid_utf8_ && is_valid_utf8(line);
  if (!valid_utf8_ || utf8()) return;
  scratch_.clear();
  valid_cp932_ = decode_cp932(line, scratch_) == 0;
  plausible_cp932_ = plausible_cp932_ && !speaks_for_utf8(line);
}

void refuse_utf16(const std::filesystem::path& file, std::string_view head) {
  constexpr std::size_t kSeen = 64;
  const std::string_view seen = head.substr(0, kSeen);
  const bool marked = seen.starts_with("\xFF\xFE") || seen.starts_with("\xFE\xFF");
  // Without a mark: every second byte of Latin text is zero.
  const auto zeros = static_cast<std::size_t>(std::ranges::count(seen, '\0'));
  const bool begins = seen.size() >= 4 && (seen[0] == '\0') != (seen[1] == '\0');
  if (!marked && !(begins && zeros * 3 >= seen.size())) return;
  throw FileError(file,
                  "UTF-16 (Unicode) で保存されているので読めません。"
                  "メモ帳などで文字コードを UTF-8 か ANSI (Shift-JIS) にして保存し直して下さい");
}

}  // namespace tobarine
