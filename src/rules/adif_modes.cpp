#include "rules/adif_modes.h"

#include <algorithm>
#include <functional>
#include <string>

#include "text/strings.h"

namespace tobarine {
namespace {

constexpr std::string_view kModes[] = {
    // sorted
    "AM",      "AMTORFEC", "ARDOP",    "ASCI",   "ATV",          "C4FM",     "CHIP",    "CHIP128",
    "CHIP64",  "CLO",      "CONTESTI", "CW",     "DIGITALVOICE", "DOMINO",   "DOMINOF", "DSTAR",
    "DYNAMIC", "FAX",      "FM",       "FMHELL", "FSK441",       "FSKHELL",  "FST4",    "FT4",
    "FT8",     "GTOR",     "HELL",     "HELL80", "HFSK",         "ISCAT",    "JS8",     "JT44",
    "JT4A",    "JT4B",     "JT4C",     "JT4D",   "JT4E",         "JT4F",     "JT4G",    "JT65",
    "JT65A",   "JT65B",    "JT65C",    "JT6M",   "JT9",          "LSB",      "MFSK",    "MFSK16",
    "MFSK8",   "MSK144",   "MT63",     "MTONE",  "OFDM",         "OLIVIA",   "OPERA",   "PAC",
    "PAC2",    "PAC3",     "PAX",      "PAX2",   "PCW",          "PKT",      "PSK",     "PSK10",
    "PSK125",  "PSK2K",    "PSK31",    "PSK63",  "PSKAM",        "PSKFEC31", "PSKHELL", "Q15",
    "Q65",     "QPSK125",  "QPSK31",   "QPSK63", "QRA64",        "ROS",      "RTTY",    "RTTYM",
    "SSB",     "SSTV",     "T10",      "THOR",   "THRB",         "THRBX",    "TOR",     "USB",
    "V4",      "VOI",      "WINMOR",   "WSPR",
};

}  // namespace

bool is_adif_mode(std::string_view mode) {
  static_assert(std::ranges::is_sorted(kModes));
  return std::ranges::binary_search(kModes, std::string_view(upper(trim(mode))));
}

}  // namespace tobarine
