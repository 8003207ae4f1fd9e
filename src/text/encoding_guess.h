// Whether a text file is UTF-8 or CP932, from its lines.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace tobarine {

inline constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";

class EncodingGuess {
 public:
  void see(std::string_view line);  // every line, in order

  // The file begins with the UTF-8 mark, or all of it is valid UTF-8 and something in it is not
  // valid CP932, or is valid but nothing that people write: a rare kanji before a half-width kana
  // ("鈴木" read as CP932), a kana between Latin letters ("Müller").
  bool utf8() const { return marked_ || (valid_utf8_ && (!valid_cp932_ || !plausible_cp932_)); }

  // It has characters that are valid in both, and is to be read as CP932.
  bool maybe_utf8() const { return !ascii_ && !utf8() && valid_utf8_; }

  // No line to come can change the answer.
  bool settled() const { return marked_ || !valid_utf8_; }

 private:
  bool first_ = true;
  bool marked_ = false;
  bool ascii_ = true;
  bool valid_utf8_ = true;
  bool valid_cp932_ = true;
  bool plausible_cp932_ = true;
  std::string scratch_;
};

// Throws FileError when the bytes that a file begins with are UTF-16, which no log may be. `head`
// is its first line as LineReader gives it, or any longer part.
void refuse_utf16(const std::filesystem::path& file, std::string_view head);

}  // namespace tobarine
