// The modes of ADIF 3.1.6: a mode and, beneath some, submodes.
#pragma once

#include <optional>
#include <string_view>

namespace tobarine {

struct AdifMode {
  std::string_view mode;
  std::string_view submode;  // empty: none
};

// What goes into MODE and SUBMODE for a name that is one of either ("FT4": MFSK, FT4; "CW": CW), in
// any case, blanks around it passed over. Nothing when the standard knows no such name.
std::optional<AdifMode> standard_mode(std::string_view name);

// The same for a pair as a log states it: a submode decides, be it in SUBMODE or in MODE; one that
// the standard does not know is kept beneath a mode that it knows.
std::optional<AdifMode> standard_mode(std::string_view mode, std::string_view submode);

}  // namespace tobarine
