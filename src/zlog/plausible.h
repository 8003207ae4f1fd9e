// Whether a contact's fields look like what they should be. Columns of text logs may be shifted and
// binary records damaged; such contacts are converted all the same, and reported.
#pragma once

#include <string>
#include <string_view>

#include "zlog/zlog_reader.h"

namespace tobarine {

// Letters, digits and "/", at least three characters, a letter and a digit among them.
bool looks_like_call(std::string_view call);

// What is odd about the date, time, call and band, in words, the reader's own remark included;
// empty when all is well. Odd is also a year whose last two digits stand for another century.
std::string odd_fields(const ZlogContact& contact);

}  // namespace tobarine
