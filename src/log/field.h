// The names of a contact's fields, as ADIF 3.1.6 has them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace tobarine {

// In alphabetical order. kOther stands for every name that is not the standard's: user-defined
// fields and those of other programs (APP_...).
enum class Field : std::uint8_t {
#define TOBARINE_FIELD(enumerator, name) enumerator,
#include "log/fields.inc"
#undef TOBARINE_FIELD
  kOther
};

inline constexpr std::size_t kFieldCount = static_cast<std::size_t>(Field::kOther);

// "QSO_DATE"; empty for kOther.
std::string_view field_name(Field field);

// The field of a name in any case; kOther when the standard has none of that name.
Field field_of(std::string_view name);

}  // namespace tobarine
