// Text from files, names and command lines as it may go to a terminal, a log line or a window.
#pragma once

#include <string>
#include <string_view>

namespace tobarine {

// One line that does nothing but show itself: control characters become their pictures (ESC "␛",
// line ends too); other controls, characters that turn the direction of writing or end a line, and
// malformed bytes become "�". Text without them comes back as it is.
std::string printable(std::string_view text);

// The same of several lines: their ends become LF, and tabs stay.
std::string printable_lines(std::string_view text);

}  // namespace tobarine
