// Small questions about texts (UTF-8). "Blank" means the ASCII blank only: a full-width blank is a
// character like any other, as it is for the programs whose files are read here.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tobarine {

// Without leading and trailing blanks.
std::string_view trim(std::string_view text);
void trim_in_place(std::string& text);
bool is_blank(std::string_view text);  // nothing but blanks

// Upper case of ASCII and full-width Latin letters; everything else stays.
std::string upper(std::string_view text);
void upper_into(std::string_view text, std::string& result);  // replaces `result`

bool contains(std::string_view text, std::string_view part);
bool is_digit(char c);
bool all_digits(std::string_view text);  // false for an empty text

// The number at the start of the text: digits and at most one point. 0 when there is none.
double leading_number(std::string_view text);

// The shortest decimal text of a number that leading_number() returned ("12", "1.5", "0").
std::string number_text(double number);

// Replaces / removes every occurrence, left to right, never looking at replaced text again.
void replace_all(std::string& text, std::string_view what, std::string_view with);

// Puts a blank for every CR and LF from the byte `from` on; returns their number.
std::size_t blank_line_ends(std::string& text, std::size_t from = 0);

// ASCII-only comparison without regard to case (file names, section names, keys).
bool equal_ignoring_case(std::string_view a, std::string_view b);

// The pieces between separators, blanks kept; an empty text is one empty piece. The function is
// called with each piece in turn.
template <typename Visit>
void for_each_piece(std::string_view text, char separator, Visit visit) {
  for (;;) {
    const std::size_t end = text.find(separator);
    visit(text.substr(0, end));
    if (end == std::string_view::npos) return;
    text.remove_prefix(end + 1);
  }
}

}  // namespace tobarine
