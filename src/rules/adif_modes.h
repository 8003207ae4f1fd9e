// The mode names that ADIF readers know without any table.
#pragma once

#include <string_view>

namespace tobarine {

// True for a name of ADIF's mode list (versions 2 and 3) or one of the submodes that older readers
// take as modes; trimmed, without regard to case.
bool is_adif_mode(std::string_view mode);

}  // namespace tobarine
