// The tags of ADIF that the tolerant reading knows, and how it finds them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string>
#include <string_view>

#include "rules/qso_record.h"

namespace tobarine {

// A tag is recognised by its name, a colon and, for some, the length behind it. Its value goes into
// a field behind a prefix; what else it does stands in AdifParser::set_field(). The order counts: a
// field of the file may match several tags, and the later ones win.
struct Tag {
  enum Place { kAnywhere, kAtStart };
  std::string_view name;
  std::string QsoRecord::*field;
  std::string_view prefix = {};
  char length = '\0';
  Place place = kAnywhere;
};

inline constexpr Tag kTags[] = {
    {"CALL", &QsoRecord::call},
    {"AGE", &QsoRecord::age},
    {"NAME", &QsoRecord::name, "", '\0', Tag::kAtStart},
    {"QTH", &QsoRecord::qth},
    {"FREQ", &QsoRecord::freq},
    {"BAND", &QsoRecord::band},
    {"RST_SENT", &QsoRecord::his_rst},
    {"RST_RCVD", &QsoRecord::my_rst},
    {"MODE", &QsoRecord::mode, "", '\0', Tag::kAtStart},
    {"CQZ", &QsoRecord::cqz, "CQZ:"},
    {"ITUZ", &QsoRecord::ituz, "ITUZ:"},
    {"STATE", &QsoRecord::state},
    {"CNTY", &QsoRecord::cnty, "CNTY:"},
    {"QSL_VIA", &QsoRecord::qsl_via, "@"},
    {"QSL_SENT", &QsoRecord::qsl_sent},
    {"QSL_RCVD", nullptr},
    {"GRIDSQUARE", &QsoRecord::grid, "", '\0', Tag::kAtStart},
    {"COMMENT", &QsoRecord::comment},
    {"IOTA", &QsoRecord::iota},
    {"DXCC", &QsoRecord::dxcc},
    {"QSO_DATE", &QsoRecord::qso_date},
    {"TIME_ON", nullptr, "", '4'},
    {"TIME_ON", nullptr, "", '6'},
    {"JCC", &QsoRecord::jcc},
    {"JCG", &QsoRecord::jcg},
    {"QSO_DATE", nullptr, "", '8'},
    {"TIME_ON", nullptr, "", '6'},
    {"SECTION", &QsoRecord::section},
    {"SRX", &QsoRecord::srx},
    {"STX", &QsoRecord::stx},
    {"OPERATOR", &QsoRecord::operator_call},
    {"APP_N1MM_EXCHANGE1", &QsoRecord::n1mm_exchange1},
    {"APP_N1MM_POINTS", &QsoRecord::n1mm_points},
    {"APP_N1MM_RADIO_NR", &QsoRecord::n1mm_radio_nr},
    {"STATION_CALLSIGN", &QsoRecord::station_call, "", '\0', Tag::kAtStart},
    {"CONTEST_ID", &QsoRecord::contest_id, "", '\0', Tag::kAtStart},
    // Known for what is lost with them.
    {"SUBMODE", nullptr, "", '\0', Tag::kAtStart},
    {"NOTES", nullptr, "", '\0', Tag::kAtStart},
    {"SAT_NAME", nullptr, "", '\0', Tag::kAtStart},
    {"SIG_INFO", nullptr, "", '\0', Tag::kAtStart},
    {"SOTA_REF", nullptr, "", '\0', Tag::kAtStart},
    {"POTA_REF", nullptr, "", '\0', Tag::kAtStart},
    {"WWFF_REF", nullptr, "", '\0', Tag::kAtStart},
};
static_assert(std::size(kTags) <= 64);

// The rows that the code names.
enum TagIndex : std::size_t {
  kCall = 0,
  kAge = 1,
  kName = 2,
  kQth = 3,
  kFreq = 4,
  kBand = 5,
  kRstSent = 6,
  kRstRcvd = 7,
  kMode = 8,
  kCqz = 9,
  kItuz = 10,
  kState = 11,
  kCnty = 12,
  kQslVia = 13,
  kQslSent = 14,
  kQslRcvd = 15,
  kComment = 17,
  kIota = 18,
  kDxcc = 19,
  kQsoDate = 20,
  kTimeOn4 = 21,
  kTimeOn6 = 22,
  kJcc = 23,
  kJcg = 24,
  kQsoDate8 = 25,
  kTime6 = 26,
  kSection = 27,
  kSrx = 28,
  kStx = 29,
  kOperator = 30,
  kExchange1 = 31,
  kSubmode = 36,
  kNotes = 37,
  kWwffRef = 42,
};
static_assert(kTags[kMode].name == "MODE" && kTags[kQslRcvd].name == "QSL_RCVD" &&
              kTags[kComment].name == "COMMENT" && kTags[kQsoDate].name == "QSO_DATE" &&
              kTags[kJcg].name == "JCG" && kTags[kExchange1].name == "APP_N1MM_EXCHANGE1" &&
              kTags[kSubmode].name == "SUBMODE" && kTags[kWwffRef].name == "WWFF_REF");

constexpr std::uint64_t bit(std::size_t tag) {
  return std::uint64_t{1} << tag;
}

// The tags whose name ends at a colon with `head` before it in the field, as bits.
struct TagMatch {
  std::uint64_t tags = 0;
  std::uint64_t own = 0;    // those whose name is all of `head`
  bool odd_length = false;  // a date or time with an unusual length
};
TagMatch tags_at(std::string_view head, char behind);

}  // namespace tobarine
