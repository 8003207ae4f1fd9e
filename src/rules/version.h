// The version of the program, as it stands in files, titles and messages.
#pragma once

#include <string_view>

namespace tobarine {

inline constexpr std::string_view kVersion = "5.29";

}  // namespace tobarine
