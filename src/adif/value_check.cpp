#include "adif/value_check.h"

#include <algorithm>
#include <array>
#include <limits>
#include <string>
#include <utility>

#include "rules/moment.h"
#include "text/strings.h"

namespace tobarine {
namespace {

enum class Type {
  kText,
  kBoolean,
  kNumber,
  kInteger,
  kPositiveInteger,
  kDate,
  kTime,
  kEnumeration,
  kGridSquare,
  kGridSquareExt,
  kGridList,
  kLocation,
  kIota,
  kSota,
  kPotaList,
  kWwff
};

constexpr double kNone = std::numeric_limits<double>::quiet_NaN();  // no limit

struct FieldType {
  Field field;
  Type type;
  std::string_view enumeration;
  double smallest;
  double largest;
};

constexpr auto kTypes = std::to_array<FieldType>({
#define TOBARINE_TYPE(field, type, enumeration, smallest, largest) \
  {Field::field, Type::type, enumeration, smallest, largest},
#include "adif/field_types.inc"
#undef TOBARINE_TYPE
});

constexpr bool every_field_in_its_place() {
  for (std::size_t i = 0; i < kTypes.size(); ++i) {
    if (kTypes[i].field != static_cast<Field>(i)) return false;
  }
  return kTypes.size() == kFieldCount;
}
static_assert(every_field_in_its_place());

using Value = std::pair<std::string_view, std::string_view>;
constexpr auto kValues = std::to_array<Value>({
#define TOBARINE_VALUE(enumeration, value) {enumeration, value},
#include "adif/enumerations.inc"
#undef TOBARINE_VALUE
});
static_assert(std::ranges::is_sorted(kValues));

bool is_listed(std::string_view enumeration, std::string_view value) {
  const std::string wanted = upper(value);
  return std::ranges::binary_search(kValues, Value(enumeration, wanted));
}

bool is_number(std::string_view text, bool whole, const FieldType& type) {
  const bool negative = text.starts_with('-');
  if (negative) text.remove_prefix(1);
  const bool digits =
      std::ranges::all_of(text, [&](char c) { return is_digit(c) || (c == '.' && !whole); });
  if (!digits || std::ranges::count(text, '.') > 1 || !std::ranges::any_of(text, is_digit)) {
    return false;
  }
  const double number = leading_number(text) * (negative ? -1 : 1);
  return !(number < type.smallest) && !(number > type.largest);  // NaN: no limit
}

bool is_letter(char c, char last) {
  const char upper_case = c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
  return upper_case >= 'A' && upper_case <= last;
}

// Pairs of letters and digits by turns: "PM95", "PM95VQ", "PM95VQ12".
bool is_grid(std::string_view text, std::size_t longest) {
  if (text.empty() || text.size() % 2 != 0 || text.size() > longest) return false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const std::size_t pair = i / 2;
    const char last = pair == 0 ? 'R' : 'X';
    if (pair % 2 == 0 ? !is_letter(text[i], last) : !is_digit(text[i])) return false;
  }
  return true;
}

// The fifth and sixth pair of a locator: "AA12" or "AA".
bool is_grid_extension(std::string_view text) {
  return (text.size() == 2 || text.size() == 4) && is_letter(text[0], 'X') &&
         is_letter(text[1], 'X') && all_digits(text.size() == 4 ? text.substr(2) : "0");
}

// "N035 40.123"
bool is_location(std::string_view text) {
  return text.size() == 11 && std::string_view("NSEWnsew").find(text[0]) != text.npos &&
         all_digits(text.substr(1, 3)) && text[4] == ' ' && all_digits(text.substr(5, 2)) &&
         text[7] == '.' && all_digits(text.substr(8)) && text[5] < '6';
}

// Whether the text has the form of a pattern: "9" a digit, "A" a letter, "X" a letter or digit,
// anything else itself.
bool has_form(std::string_view text, std::string_view pattern) {
  return text.size() == pattern.size() &&
         std::equal(text.begin(), text.end(), pattern.begin(), [](char c, char form) {
           if (form == '9') return is_digit(c);
           if (form == 'A') return is_letter(c, 'Z');
           if (form == 'X') return is_digit(c) || is_letter(c, 'Z');
           return c == form;
         });
}

bool is_iota(std::string_view text) {
  return has_form(text, "AA-999") && is_listed("Continent", text.substr(0, 2));
}

// "JA/ST-013"
bool is_sota(std::string_view text) {
  const std::size_t slash = text.find('/');
  return slash != text.npos && slash > 0 && slash <= 8 &&
         has_form(text.substr(slash + 1), "XX-999");
}

// "JAFF-0001"
bool is_wwff(std::string_view text) {
  const std::size_t dash = text.find('-');
  return dash != text.npos && dash >= 3 && dash <= 6 &&
         (text.substr(dash - 2, 2) == "FF" || text.substr(dash - 2, 2) == "ff") &&
         has_form(text.substr(dash), "-9999");
}

// "JP-1234", "JP-12345@JP-13"
bool is_pota(std::string_view text) {
  const std::size_t at = text.find('@');
  if (at != text.npos && (at + 4 > text.size() || at + 8 < text.size())) return false;
  text = text.substr(0, at);
  const std::size_t dash = text.find('-');
  if (dash == text.npos || dash == 0 || dash > 4) return false;
  const std::string_view number = text.substr(dash + 1);
  return all_digits(number) && (number.size() == 4 || number.size() == 5);
}

template <typename Check>
bool all_of_list(std::string_view text, Check check) {
  bool all = true;
  for_each_piece(text, ',', [&](std::string_view piece) { all = all && check(trim(piece)); });
  return all;
}

}  // namespace

bool is_allowed(Field field, std::string_view value) {
  if (field == Field::kOther) return true;
  const FieldType& type = kTypes[static_cast<std::size_t>(field)];
  switch (type.type) {
    case Type::kText:
      return true;
    case Type::kBoolean:
      return value.size() == 1 && std::string_view("YyNn").find(value[0]) != value.npos;
    case Type::kNumber:
      return is_number(value, false, type);
    case Type::kInteger:
      return is_number(value, true, type);
    case Type::kPositiveInteger:
      return is_number(value, true, type) && leading_number(value) > 0;
    case Type::kDate:
      return value.size() == 8 && value >= "1930" && all_digits(value) && is_calendar_day(value);
    case Type::kTime:
      return all_digits(value) && Moment::read("20000101", value, Zone::kUtc).has_value();
    case Type::kEnumeration:
      return is_listed(type.enumeration, value);
    case Type::kGridSquare:
      return is_grid(value, 8);
    case Type::kGridSquareExt:
      return is_grid_extension(value);
    case Type::kGridList:
      return all_of_list(value, [](std::string_view grid) { return is_grid(grid, 8); });
    case Type::kLocation:
      return is_location(value);
    case Type::kIota:
      return is_iota(value);
    case Type::kSota:
      return is_sota(value);
    case Type::kPotaList:
      return all_of_list(value, is_pota);
    case Type::kWwff:
      return is_wwff(value);
  }
  return false;
}

}  // namespace tobarine
