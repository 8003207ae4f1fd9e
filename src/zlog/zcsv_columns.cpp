#include "zlog/zcsv_columns.h"

#include <algorithm>

#include "text/encoding_guess.h"
#include "text/strings.h"
#include "zlog/zlo_record.h"

namespace tobarine::zcsv {
namespace {

constexpr Column kColumns[] = {
    {"Date", Special::kDate},
    {"Time", Special::kTime},
    {"TimeZone", Special::kTimeZone},
    {"CallSign", &ZlogQso::call},
    {"RSTSent", &ZlogQso::rst_sent},
    {"NrSent", &ZlogQso::sent_number},
    {"RSTRcvd", &ZlogQso::rst_received},
    {"NrRcvd", &ZlogQso::received_number},
    {"Serial", &ZlogQso::serial},
    {"Mode", &ZlogQso::mode},
    {"Band", Special::kBand},
    {"Power", &ZlogQso::power},
    {"Multi1", &ZlogQso::multi1},
    {"Multi2", &ZlogQso::multi2},
    {"NewMulti1", &ZlogQso::new_multi1},
    {"NewMulti2", &ZlogQso::new_multi2},
    {"Points", &ZlogQso::points},
    {"Operator", &ZlogQso::operator_name},
    {"Memo", &ZlogQso::memo},
    {"CQ", &ZlogQso::cq},
    {"Dupe", &ZlogQso::dupe},
    {"Reserve", &ZlogQso::reserve},
    {"TX", &ZlogQso::tx},
    {"Power2", &ZlogQso::power2},
    {"Reserve2", &ZlogQso::reserve2},
    {"Reserve3", &ZlogQso::reserve3},
    {"Freq", &ZlogQso::freq_khz},
    {"QsyViolation", &ZlogQso::qsy_violation},
    {"PCName", &ZlogQso::pc_name},
    {"Forced", &ZlogQso::forced},
    {"QslState", Special::kQslState},
    {"Invalid", &ZlogQso::invalid},
    {"Area", &ZlogQso::area},
    {"RBN Verified", &ZlogQso::verified},
};

constexpr std::string_view kHighestBand = "10 GHz & up";
constexpr std::string_view kMegahertz = " MHz";

}  // namespace

std::span<const Column> columns() {
  return kColumns;
}

bool is_heading(std::string_view first_line) {
  if (first_line.starts_with(kUtf8Mark)) first_line.remove_prefix(kUtf8Mark.size());
  std::string plain(first_line.substr(0, 60));
  replace_all(plain, "\"", "");
  return plain.starts_with("Date,Time,TimeZone,CallSign,");
}

std::string band_for_csv(std::string_view band) {
  if (band == zlo::kBands.back()) return std::string(kHighestBand);
  return std::string(band).append(kMegahertz);
}

std::string_view band_from_csv(std::string_view text) {
  if (text == kHighestBand) return zlo::kBands.back();
  if (!text.ends_with(kMegahertz)) return {};
  text.remove_suffix(kMegahertz.size());
  const auto* const found = std::ranges::find(zlo::kBands, text);
  return found == zlo::kBands.end() ? std::string_view() : *found;
}

}  // namespace tobarine::zcsv
