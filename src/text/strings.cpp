#include "text/strings.h"

#include <array>
#include <charconv>

#include "text/utf8.h"

namespace tobarine {
namespace {

char upper_ascii(char c) {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

}  // namespace

std::string_view trim(std::string_view text) {
  const std::size_t first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

bool is_blank(std::string_view text) {
  return text.find_first_not_of(' ') == std::string_view::npos;
}

void trim_in_place(std::string& text) {
  text.erase(text.find_last_not_of(' ') + 1);
  text.erase(0, text.find_first_not_of(' '));
}

void upper_into(std::string_view text, std::string& result) {
  result.assign(text);
  for (char& c : result) c = upper_ascii(c);
  if (is_ascii(result)) return;
  // Full-width a-z are EF BD 81 .. EF BD 9A in UTF-8, A-Z are EF BC A1 .. EF BC BA.
  for (std::size_t i = 0; i + 2 < result.size(); ++i) {
    if (result[i] != '\xEF' || result[i + 1] != '\xBD') continue;
    const auto last = static_cast<unsigned char>(result[i + 2]);
    if (last >= 0x81 && last <= 0x9A) {
      result[i + 1] = '\xBC';
      result[i + 2] = static_cast<char>(last + 0x20);
    }
  }
}

std::string upper(std::string_view text) {
  std::string result;
  upper_into(text, result);
  return result;
}

bool contains(std::string_view text, std::string_view part) {
  return text.find(part) != std::string_view::npos;
}

bool is_digit(char c) {
  return c >= '0' && c <= '9';
}

bool all_digits(std::string_view text) {
  for (const char c : text) {
    if (!is_digit(c)) return false;
  }
  return !text.empty();
}

double leading_number(std::string_view text) {
  double whole = 0;
  std::size_t i = 0;
  for (; i < text.size() && is_digit(text[i]); ++i) whole = whole * 10 + (text[i] - '0');
  if (i == text.size() || text[i] != '.') return whole;
  std::size_t end = i + 1;
  while (end < text.size() && is_digit(text[end])) ++end;
  double number = 0;
  const auto [stop, error] = std::from_chars(text.data(), text.data() + end, number);
  return error == std::errc() ? number : whole;
}

std::string number_text(double number) {
  std::array<char, 400> digits{};
  const auto [end, error] =
      std::to_chars(digits.data(), digits.data() + digits.size(), number, std::chars_format::fixed);
  return error == std::errc() ? std::string(digits.data(), end) : "0";
}

void replace_all(std::string& text, std::string_view what, std::string_view with) {
  std::size_t at = text.find(what);
  if (at == std::string::npos) return;
  std::string result;
  std::size_t from = 0;
  for (; at != std::string::npos; at = text.find(what, from)) {
    result.append(text, from, at - from).append(with);
    from = at + what.size();
  }
  text = result.append(text, from);
}

std::size_t blank_line_ends(std::string& text, std::size_t from) {
  std::size_t count = 0;
  for (const char end : {'\r', '\n'}) {
    for (std::size_t at = text.find(end, from); at != std::string::npos; at = text.find(end, at)) {
      text[at] = ' ';
      ++count;
    }
  }
  return count;
}

bool equal_ignoring_case(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i) {
    if (upper_ascii(a[i]) != upper_ascii(b[i])) return false;
  }
  return true;
}

}  // namespace tobarine
