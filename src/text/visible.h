// Texts from files, for people's eyes: a terminal or a window is to show them, never to obey them.
#pragma once

#include <string>
#include <string_view>

namespace tobarine {

// One line of UTF-8: each control character becomes its picture (ESC "␛", LF "␊"), and what would
// turn or hide other text, or is no character at all, becomes U+FFFD.
std::string visible(std::string_view text);

// The same for a text of several lines: line ends stay, as LF, and so do tabs.
std::string visible_lines(std::string_view text);

}  // namespace tobarine
