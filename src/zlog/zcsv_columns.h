// The columns of zLog's CSV (UTF-8 with its mark, one heading line): one table for reading and
// writing. A file may lack the last ones, or have them in another order: the heading tells.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <variant>

#include "zlog/zlog_qso.h"

namespace tobarine::zcsv {

// What takes more than a look at one member.
enum class Special { kDate, kTime, kTimeZone, kBand, kQslState };

struct Column {
  std::string_view name;
  std::variant<std::string ZlogQso::*, unsigned ZlogQso::*, std::int32_t ZlogQso::*,
               bool ZlogQso::*, Special>
      what;
};

// In the order of writing.
std::span<const Column> columns();

// Whether a file's first line (with or without the mark, quoted or not) is the heading.
bool is_heading(std::string_view first_line);

// zLog's band text ("7", "10G") to the CSV's ("7 MHz", "10 GHz & up") and back; empty for others.
std::string band_for_csv(std::string_view band);
std::string_view band_from_csv(std::string_view text);

}  // namespace tobarine::zcsv
