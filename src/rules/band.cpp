#include "rules/band.h"

#include "text/strings.h"

namespace tobarine {
namespace {

struct FixedFreq {
  std::string_view band;
  std::string_view freq;
};

// Irregular rows stand as the format has them: 902 MHz is keyed "35M", the millimetre bands give
// GHz, and "1MM" gives "24". The band table is the user's way to correct any of them.
constexpr FixedFreq kFixedFreqs[] = {
    {"160M", "1.9"},  {"80M", "3.5"},   {"40M", "7"},     {"30M", "10"},    {"20M", "14"},
    {"17M", "18"},    {"15M", "21"},    {"12M", "24"},    {"10M", "28"},    {"6M", "50"},
    {"2M", "144"},    {"1.25M", "220"}, {"70CM", "432"},  {"35M", "902"},   {"23CM", "1300"},
    {"13CM", "2300"}, {"9CM", "3300"},  {"6CM", "5660"},  {"3CM", "10000"}, {"1.25CM", "24000"},
    {"6MM", "47"},    {"4MM", "75"},    {"2.5MM", "120"}, {"2MM", "142"},   {"1MM", "24"},
};

constexpr std::size_t kLongestBand = 100;  // bytes; what is longer is no name of a band

struct BandRange {
  double low;  // MHz, both ends inclusive
  double high;
  std::string_view band;
  std::string_view zlog_freq;  // Hamlog's text for a zLog band; differs from kFixedFreqs
};

constexpr BandRange kRanges[] = {
    {1, 2, "160M", "1.9"},        {3, 4, "80M", "3.5"},         {7, 8, "40M", "7"},
    {10, 11, "30M", "10"},        {14, 15, "20M", "14"},        {18, 19, "17M", "18"},
    {21, 22, "15M", "21"},        {24, 25, "12M", "24"},        {28, 30, "10M", "28"},
    {50, 54, "6M", "50"},         {144, 146, "2M", "144"},      {430, 440, "70CM", "430"},
    {1200, 1300, "23CM", "1200"}, {2300, 2450, "13CM", "2400"}, {5600, 5850, "6CM", "5600"},
    {10000, 10250, "3CM", ""},
};

const BandRange* range_of(std::string_view freq) {
  const double f = leading_number(freq);
  for (const BandRange& range : kRanges) {
    if (f >= range.low && f <= range.high) return &range;
  }
  return nullptr;
}

// The row whose keyword stands in the remarks, nullptr when none does. Only the first row with this
// frequency is tried.
const BandRow* row_named_in_remarks(const BandTable& table, std::string_view freq,
                                    std::string_view rmks1, std::string_view rmks2) {
  if (!contains(rmks1, "BAND=") && !contains(rmks2, "BAND=")) return nullptr;
  const BandRow* row = table.find_freq(trim(freq));
  if (row == nullptr) return nullptr;
  const std::string keyword = "BAND=" + upper(row->memo);
  return contains(row->placement == "1" ? rmks1 : rmks2, keyword) ? row : nullptr;
}

}  // namespace

void hamlog_freq_from_band(const BandTable& table, QsoRecord& record) {
  record.freq.clear();
  if (record.band.size() > kLongestBand) return;
  const std::string band = upper(trim(record.band));
  for (const FixedFreq& fixed : kFixedFreqs) {
    if (fixed.band == band) record.freq = fixed.freq;
  }
  if (const BandRow* row = table.find_adif(band)) {
    record.freq = row->freq;
    record.band_remark = "Band=" + row->memo;
    record.band_remark_pos = row->placement;
  }
}

std::string_view band_from_freq(std::string_view freq) {
  if (freq == "10G") return "3CM";
  const BandRange* range = range_of(freq);
  return range == nullptr ? std::string_view() : range->band;
}

HamlogBand band_for_adif(const BandTable& table, std::string_view freq_integer,
                         std::string_view rmks1, std::string_view rmks2) {
  if (const BandRow* row = row_named_in_remarks(table, freq_integer, rmks1, rmks2)) {
    return {row->adif, true};
  }
  const BandRange* range = range_of(freq_integer);
  return {range == nullptr ? std::string_view() : range->band, false};
}

void band_from_zlog(std::string& band, std::string& freq, std::string& name_160m) {
  const BandRange* range = range_of(band);
  if (range == nullptr) {
    band.clear();
    freq.clear();
  } else if (range->low == 1) {
    name_160m = range->band;
    freq = range->zlog_freq;
  } else if (range->low == 10000) {
    band = "10100";
  } else {
    band = range->band;
    freq = range->zlog_freq;
  }
}

}  // namespace tobarine
