#include "rules/japanese_call.h"

#include "text/strings.h"

namespace tobarine {

bool is_japanese_call(std::string_view call) {
  if (call.size() < 3 || !is_digit(call[2])) return false;
  const char series = call[1];
  if (call[0] == 'J') return series >= 'A' && series <= 'S';
  return (call[0] == '7' || call[0] == '8') && series >= 'J' && series <= 'N';
}

}  // namespace tobarine
