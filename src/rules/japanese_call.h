// Whether a call sign was issued in Japan.
#pragma once

#include <string_view>

namespace tobarine {

// JA to JS, 7J to 7N or 8J to 8N, then a digit, then anything. Upper case only.
bool is_japanese_call(std::string_view call);

}  // namespace tobarine
