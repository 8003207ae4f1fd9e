// The clock on the wall.
#pragma once

#include <ctime>

namespace tobarine {

std::tm local_time();  // now

}  // namespace tobarine
