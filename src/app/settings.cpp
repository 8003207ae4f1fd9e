#include "app/settings.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <system_error>
#include <variant>

#include "app/profile_file.h"
#include "rules/version.h"
#include "text/strings.h"
#include "text/utf8.h"

namespace tobarine {
namespace {

constexpr std::size_t kLongestValue = 79;

enum class Form { kText, kNumberText };

struct Key {
  std::string_view section;
  std::string_view name;
  std::variant<std::int16_t Settings::*, std::string Settings::*> field;
  Form form = Form::kText;  // kNumberText: kept as the shortest text of its leading number
};

// In the order of the file.
constexpr Key kKeys[] = {
    {"Config", "Chk_1", &Settings::Chk_1},
    {"Config", "Chk_2", &Settings::Chk_2},
    {"Config", "Chk_3", &Settings::Chk_3},
    {"Config", "Chk_4", &Settings::Chk_4},
    {"Config", "Chk_5", &Settings::Chk_5},
    {"Config", "Chk_6", &Settings::Chk_6},
    {"Config", "Chk_7", &Settings::Chk_7},
    {"Config", "Chk_8", &Settings::Chk_8},
    {"Config", "Chk_9", &Settings::Chk_9},
    {"Config", "Chk_10", &Settings::Chk_10},
    {"Config", "Chk_11", &Settings::Chk_11},
    {"Config", "Op_1", &Settings::Op_1},
    {"Config", "Op_2", &Settings::Op_2},
    {"Config", "was_moji", &Settings::was_moji},
    {"Config", "Chk_12", &Settings::Chk_12},
    {"Config", "Chk_13", &Settings::Chk_13},
    {"Config", "Chk_14", &Settings::Chk_14},
    {"Config", "Chk_15", &Settings::Chk_15},
    {"Config", "Chk_16", &Settings::Chk_16},
    {"Config", "set_YYYY", &Settings::set_YYYY, Form::kNumberText},
    {"Config", "Op_3", &Settings::Op_3},
    {"JCC_JCG", "JCC_date", &Settings::JCC_date},
    {"JCC_JCG", "JCG_date", &Settings::JCG_date},
    {"set_STX", "set_STX", &Settings::set_STX, Form::kNumberText},
    {"utc_jst_str", "utc_jst_str", &Settings::utc_jst_str},
    {"del_power_flag", "del_power_flag", &Settings::del_power_flag},
    {"zlog_all_jst", "zlog_all_jst", &Settings::zlog_all_jst},
    {"Tobarine", "freq_only_MHz_1", &Settings::freq_only_MHz_1},
    {"ADIF_2_zLog_all", "OP_name_tenki", &Settings::OP_name_tenki},
    {"ADIF_2_zLog_all", "TX_NR_tenki", &Settings::TX_NR_tenki},
    {"ADIF_2_zLog_all", "COMMENT_tenki", &Settings::COMMENT_tenki},
    {"ADIF_2_zLog_all", "AGE_tenki", &Settings::AGE_tenki},
    {"ADIF_2_zLog_all", "IOTA_tenki", &Settings::IOTA_tenki},
    {"ADIF_2_zLog_all", "TX_NR_rmks", &Settings::TX_NR_rmks},
    {"ADIF_2_zLog_all", "COMMENT_rmks", &Settings::COMMENT_rmks},
    {"ADIF_2_zLog_all", "AGE_rmks", &Settings::AGE_rmks},
    {"ADIF_2_zLog_all", "IOTA_rmks", &Settings::IOTA_rmks},
    {"ADIF_2_zLog_all", "TX_NR_001", &Settings::TX_NR_001},
    {"ADIF_2_zLog_all", "freq_only_MHz_2", &Settings::freq_only_MHz_2},
    {"ADIF_2_zLog_all", "csv_qth", &Settings::csv_qth},
};

// Rounds halves to the even neighbour; what does not fit becomes the nearest end.
std::int16_t to_int16(std::string_view text) {
  constexpr double kMost = std::numeric_limits<std::int16_t>::max();
  return static_cast<std::int16_t>(std::min(std::nearbyint(leading_number(text)), kMost));
}

void assign(Settings& settings, const Key& key, std::string_view value) {
  if (const auto* number = std::get_if<std::int16_t Settings::*>(&key.field)) {
    settings.** number = to_int16(value);
  } else {
    const bool as_number = key.form == Form::kNumberText;
    settings.*std::get<std::string Settings::*>(key.field) =
        as_number ? number_text(leading_number(value)) : std::string(value);
  }
}

std::string value_of(const Settings& settings, const Key& key) {
  if (const auto* number = std::get_if<std::int16_t Settings::*>(&key.field)) {
    return std::to_string(settings.**number);
  }
  // Written with another key's value on purpose; see write_settings().
  if (key.name == "TX_NR_rmks") return settings.TX_NR_tenki;
  return settings.*std::get<std::string Settings::*>(key.field);
}

}  // namespace

Settings first_start_settings() {
  Settings settings;
  settings.Chk_1 = 1;
  settings.Chk_2 = 1;
  settings.Op_1 = 2;
  settings.Op_2 = 2;
  settings.was_moji = "WAS=";
  settings.Chk_15 = "1";
  return settings;
}

Settings read_settings(const std::filesystem::path& file) {
  const ProfileFile profile(file);
  Settings settings;
  for (const Key& key : kKeys) {
    assign(settings, key, profile.get(key.section, key.name, kLongestValue));
  }
  return settings;
}

void write_settings(const Settings& settings, const std::filesystem::path& file) {
  std::error_code error;
  ProfileFile profile = std::filesystem::exists(file, error) ? ProfileFile(file) : ProfileFile();
  profile.set("Config", "version", kVersion);
  for (const Key& key : kKeys) profile.set(key.section, key.name, value_of(settings, key));
  profile.save(file);
}

bool set_setting(Settings& settings, std::string_view name, std::string_view value) {
  const auto* const key = std::ranges::find(kKeys, name, &Key::name);
  if (key == std::end(kKeys)) return false;
  const std::string_view kept = left_chars(value, kLongestValue);
  if (const auto* text = std::get_if<std::string Settings::*>(&key->field)) {
    settings.** text = kept;
  } else {
    assign(settings, *key, kept);
  }
  return true;
}

H2lOptions h2l_options(const Settings& s) {
  H2lOptions options;
  options.use_rmks1 = s.Chk_1 == 1;
  options.use_rmks2 = s.Chk_2 == 1;
  options.leave_out_jst = s.Chk_3 == 1;
  options.leave_out_japanese_codes = s.Chk_4 == 1;
  options.keep_full_width_rmks1 = s.Chk_5 == 1;
  options.keep_full_width_rmks2 = s.Chk_6 == 1;
  options.slash_call_in_comment = s.Chk_7 == 1;
  options.write_name = s.Chk_8 == 1;
  options.write_state = s.Chk_9 == 1;
  if (s.Chk_10 == 1) options.state_search = StateSearch::kKeyword;
  if (s.Chk_11 == 1) options.state_search = StateSearch::kKeywordThenWord;
  options.state_remarks = s.Op_2 == 0   ? StateRemarks::kRmks1
                          : s.Op_2 == 1 ? StateRemarks::kRmks2
                                        : StateRemarks::kEither;
  options.state_keyword = s.was_moji;
  options.dx_marker_in_comment = s.Chk_14 == 1;
  options.write_qth = s.Chk_16 == "1";
  return options;
}

char zlog_zone(const Settings& s) {
  return s.Op_3 == 1 ? 'J' : 'U';
}

AdifToZlogOptions adif_to_zlog_options(const Settings& s) {
  const bool to_jst = s.utc_jst_str == time_mode_keyword(TimeMode::kAllJst) ||
                      s.utc_jst_str == time_mode_keyword(TimeMode::kAllJstFromAdif);
  AdifToZlogOptions options;
  options.zlog.all_to_jst = to_jst || s.zlog_all_jst == "1";
  options.zlog.zlo_to_jst = to_jst;
  if (s.set_STX != "0") options.zlog.sent_number = s.set_STX;  // "0" is what an empty text becomes
  options.zlog.running_number = s.TX_NR_001 == "1";
  options.zlog.drop_power_letter = s.del_power_flag == "1";
  options.zlog.write_operator = s.OP_name_tenki == "1";
  options.zlog.write_tx_number = s.TX_NR_tenki == "1";
  options.zlog.write_comment = s.COMMENT_tenki == "1";
  options.zlog.write_age = s.AGE_tenki == "1";
  options.zlog.write_iota = s.IOTA_tenki == "1";
  const auto place = [](const std::string& remarks) { return remarks == "2" ? 2 : 1; };
  options.comment_remarks = place(s.COMMENT_rmks);
  options.age_remarks = place(s.AGE_rmks);
  options.iota_remarks = place(s.IOTA_rmks);
  options.tx_remarks = place(s.TX_NR_rmks);
  options.remarks = l2h_options(s, 0).remarks;
  if (to_jst) options.csv_time = TimeMode::kAllJstFromAdif;
  options.whole_mhz = s.freq_only_MHz_2 == "1";
  options.write_qth = s.csv_qth == "1";
  return options;
}

L2hOptions l2h_options(const Settings& s, int option1) {
  L2hOptions options;
  options.remarks.write_state = s.Chk_9 == 1;
  options.remarks.state_place = s.Op_2;
  options.remarks.state_prefixed = s.Chk_10 == 1;
  options.remarks.state_prefix = s.was_moji;
  options.write_qth = s.Chk_16 == "1";
  options.time_mode = set_time_mode(option1, true);
  return options;
}

}  // namespace tobarine
