// zLog's bands and ADIF's.
#pragma once

#include <string_view>

namespace tobarine {

// zLog's text of an ADIF band in any case ("40m": "7"); empty when zLog has none.
std::string_view zlog_band(std::string_view adif_band);

// ADIF's band of zLog's text ("7": "40m"); empty for other texts.
std::string_view adif_band(std::string_view zlog_band);

}  // namespace tobarine
