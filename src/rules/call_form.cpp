#include "rules/call_form.h"

#include "text/strings.h"
#include "text/utf8.h"

namespace tobarine {
namespace {

// Letters and digits, both of them, in parts that a slash or hyphen divides.
bool has_form(std::string_view call) {
  bool letter = false;
  bool digit = false;
  bool part_begins = true;
  for (const char c : call) {
    const bool divides = c == '/' || c == '-';
    if (divides && part_begins) return false;
    if (c >= 'A' && c <= 'Z') {
      letter = true;
    } else if (c >= '0' && c <= '9') {
      digit = true;
    } else if (!divides) {
      return false;
    }
    part_begins = divides;
  }
  return call.size() >= 3 && letter && digit && !part_begins;
}

}  // namespace

std::string_view call_oddity(std::string_view call) {
  if (has_form(call)) return {};
  if (is_blank(call)) return "空です";
  if (!is_ascii(call)) return "全角などの文字があります";
  if (has_form(upper(call))) return "小文字があります";
  return "コールサインの形ではありません";
}

}  // namespace tobarine
