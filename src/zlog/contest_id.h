// The contests that zLog names, under their names in ADIF's list.
#pragma once

#include <string_view>

namespace tobarine {

// The CONTEST_ID of zLog's contest for a contact in a mode (zLog's text), for many contests have
// one for each; empty when the list has none.
std::string_view contest_id(std::string_view zlog_contest, std::string_view mode);

}  // namespace tobarine
