#include "rules/call_form.h"

#include <algorithm>

#include "text/strings.h"
#include "text/utf8.h"

namespace tobarine {
namespace {

bool is_upper_letter(char c) {
  return c >= 'A' && c <= 'Z';
}

bool has_form(std::string_view call) {
  const auto fits = [](char c) {
    return is_upper_letter(c) || is_digit(c) || c == '/' || c == '-';
  };
  const auto at_edge = [](char c) { return c == '/' || c == '-'; };
  return call.size() >= 3 && std::ranges::all_of(call, fits) && !at_edge(call.front()) &&
         !at_edge(call.back()) && !contains(call, "//") && std::ranges::any_of(call, is_digit) &&
         std::ranges::any_of(call, is_upper_letter);
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
