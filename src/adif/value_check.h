// Whether a value is what ADIF 3.1.6 allows for a field: a day of the calendar, a number in its
// limits, a listed value, a locator ...
#pragma once

#include <string_view>

#include "log/field.h"

namespace tobarine {

// Fields without a form of their own (texts, kOther) take every value, as do lists that the program
// does not have (sections, counties, regions). Listed values match in any case.
bool is_allowed(Field field, std::string_view value);

}  // namespace tobarine
