// Band names (ADIF: "160M" .. "1MM"), Hamlog's frequency texts (MHz) and plain frequencies (MHz),
// one into another. Band names are compared trimmed and in upper case; frequencies are read with
// leading_number().
#pragma once

#include <string>
#include <string_view>

#include "rules/conversion_tables.h"
#include "rules/qso_record.h"

namespace tobarine {

// ADIF to Hamlog: sets `freq` from `band`, first by the fixed list, then by the band table, which
// also sets `band_remark` and `band_remark_pos`. A band that neither knows gives an empty `freq`.
void hamlog_freq_from_band(const BandTable& table, QsoRecord& record);

// ADIF to Hamlog: the band of a frequency, empty when none holds it. "10G" is "3CM".
std::string_view band_from_freq(std::string_view freq);

struct HamlogBand {
  std::string_view name;  // empty when no band holds the frequency
  bool from_remark;       // the remarks named the band, not the frequency
};

// Hamlog to ADIF: the band of a frequency's integer part, unless the remarks (as read) name one
// with "BAND=". The search is case-sensitive although the other direction writes "Band="; and a row
// placed at "2" is searched in remarks 2. Both are old habits of the format and stay.
// The name points into `table` or to a constant.
HamlogBand band_for_adif(const BandTable& table, std::string_view freq_integer,
                         std::string_view rmks1, std::string_view rmks2);

// zLog: `band` holds the band's number in MHz; sets `band` to its name and `freq` to Hamlog's text.
// For 1 to 2 MHz the name goes to `name_160m` and `band` keeps its number; for 10 GHz `band`
// becomes "10100" and `freq` stays. Outside all bands both become empty.
void band_from_zlog(std::string& band, std::string& freq, std::string& name_160m);

}  // namespace tobarine
