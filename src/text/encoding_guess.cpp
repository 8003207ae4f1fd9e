#include "text/encoding_guess.h"

#include "text/cp932.h"
#include "text/utf8.h"

namespace tobarine {

void EncodingGuess::see(std::string_view line) {
  if (first_) marked_ = line.starts_with(kUtf8Mark);
  first_ = false;
  if (is_ascii(line)) return;
  ascii_ = false;
  valid_utf8_ = valid_utf8_ && is_valid_utf8(line);
  scratch_.clear();
  valid_cp932_ = valid_cp932_ && decode_cp932(line, scratch_) == 0;
}

}  // namespace tobarine
