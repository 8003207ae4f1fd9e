// Whether a text file is UTF-8 or CP932, from its lines.
#pragma once

#include <string>
#include <string_view>

namespace tobarine {

inline constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";

class EncodingGuess {
 public:
  void see(std::string_view line);  // every line, in order

  // The file begins with the UTF-8 mark, or is valid UTF-8 and not valid CP932.
  bool utf8() const { return marked_ || (valid_utf8_ && !valid_cp932_); }

  // It has characters that are valid in both, and is to be read as CP932.
  bool maybe_utf8() const { return !ascii_ && !utf8() && valid_utf8_; }

 private:
  bool first_ = true;
  bool marked_ = false;
  bool ascii_ = true;
  bool valid_utf8_ = true;
  bool valid_cp932_ = true;
  std::string scratch_;
};

}  // namespace tobarine
