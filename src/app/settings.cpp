#include "app/settings.h"

#include <algorithm>
#include <system_error>

#include "app/option_table.h"
#include "app/profile_file.h"
#include "rules/version.h"
#include "text/error.h"
#include "text/strings.h"
#include "text/utf8.h"

namespace tobarine {
namespace {

std::size_t longest_value(const Option& option) {
  return option.form == Option::Form::kPath ? 259 : 79;
}

// As the file gives it.
void set_from_file(Settings& settings, const Option& option, std::string_view value) {
  const bool as_number = option.form == Option::Form::kNumberText;
  set_option(settings, option, as_number ? number_text(leading_number(value)) : std::string(value));
}

std::string value_for_file(const Settings& settings, const Option& option) {
  // Written with another key's value on purpose; see write_settings().
  if (option.key == "TX_NR_rmks") return settings.write_tx_number;
  return option_value(settings, option);
}

}  // namespace

Settings first_start_settings() {
  Settings settings;
  for (const Option& option : option_table()) set_option(settings, option, option.first);
  return settings;
}

Settings read_settings(const std::filesystem::path& file) {
  const ProfileFile profile(file);
  Settings settings;
  for (const Option& option : option_table()) {
    set_from_file(settings, option, profile.get(option.section, option.key, longest_value(option)));
  }
  return settings;
}

void write_settings(const Settings& settings, const std::filesystem::path& file) {
  std::error_code error;
  ProfileFile profile = std::filesystem::exists(file, error) ? ProfileFile(file) : ProfileFile();
  profile.set("Config", "version", kFormVersion);
  for (const Option& option : option_table()) {
    const std::string value = value_for_file(settings, option);
    if (option.saved == Option::Saved::kOnceChosen && value.empty()) continue;
    profile.set(option.section, option.key, value);
  }
  profile.save(file);
}

void set_setting(Settings& settings, std::string_view name, std::string_view value) {
  const Option* const option = find_option(name);
  if (option == nullptr) {
    throw UsageError("設定の名前が違います: " + std::string(name) +
                     " (名前の一覧: tobarine-cli settings)");
  }
  const bool known =
      option->values.empty() || value == option->first ||
      std::ranges::find(option->values, value, &OptionValue::value) != option->values.end();
  if (!known) {
    throw UsageError("設定 " + std::string(name) + " の値が使えません: " + std::string(value) +
                     " (使える値: " + allowed_values(*option) + ")");
  }
  if (std::ranges::any_of(value, [](char c) { return static_cast<unsigned char>(c) < ' '; })) {
    throw UsageError("設定 " + std::string(name) + " の値に改行やタブなどは使えません");
  }
  set_option(settings, *option, left_chars(value, longest_value(*option)));
}

H2lOptions h2l_options(const Settings& s) {
  H2lOptions options;
  options.use_rmks1 = s.use_rmks1 == 1;
  options.use_rmks2 = s.use_rmks2 == 1;
  options.leave_out_jst = s.leave_out_jst == 1;
  options.leave_out_japanese_codes = s.leave_out_japanese_codes == 1;
  options.keep_full_width_rmks1 = s.keep_full_width_rmks1 == 1;
  options.keep_full_width_rmks2 = s.keep_full_width_rmks2 == 1;
  options.slash_call_in_comment = s.slash_call_in_comment == 1;
  options.write_name = s.write_name == 1;
  options.write_state = s.write_state == 1;
  if (s.state_after_keyword == 1) options.state_search = StateSearch::kKeyword;
  if (s.state_after_keyword_or_alone == 1) options.state_search = StateSearch::kKeywordThenWord;
  options.state_remarks = s.state_remarks == 0   ? StateRemarks::kRmks1
                          : s.state_remarks == 1 ? StateRemarks::kRmks2
                                                 : StateRemarks::kEither;
  options.state_keyword = s.state_keyword;
  options.dx_marker_in_comment = s.dx_marker_in_comment == 1;
  options.write_qth = s.write_qth == "1";
  return options;
}

std::optional<char> zlog_zone(const Settings& s) {
  if (s.zlog_in_jst == 1) return 'J';  // never so by itself
  if (s.zlog_zone_chosen == "1") return 'U';
  return std::nullopt;
}

AdifToZlogOptions adif_to_zlog_options(const Settings& s) {
  const bool to_jst = s.zlog_time == time_mode_keyword(TimeMode::kAllJst) ||
                      s.zlog_time == time_mode_keyword(TimeMode::kAllJstFromAdif);
  AdifToZlogOptions options;
  options.zlog.all_to_jst = to_jst || s.all_in_jst == "1";
  options.zlog.zlo_to_jst = to_jst;
  if (s.sent_number != "0")
    options.zlog.sent_number = s.sent_number;  // "0" is what an empty text becomes
  options.zlog.running_number = s.running_number == "1";
  options.zlog.drop_power_letter = s.drop_power_letter == "1";
  options.zlog.write_operator = s.write_operator == "1";
  options.zlog.write_tx_number = s.write_tx_number == "1";
  options.zlog.write_comment = s.write_comment == "1";
  options.zlog.write_age = s.write_age == "1";
  options.zlog.write_iota = s.write_iota == "1";
  const auto place = [](const std::string& remarks) { return remarks == "2" ? 2 : 1; };
  options.comment_remarks = place(s.comment_remarks);
  options.age_remarks = place(s.age_remarks);
  options.iota_remarks = place(s.iota_remarks);
  options.tx_remarks = place(s.tx_number_remarks);
  options.remarks = l2h_options(s, 0).remarks;
  if (to_jst) options.csv_time = TimeMode::kAllJstFromAdif;
  options.whole_mhz = s.whole_mhz == "1";
  options.write_qth = s.write_qth_to_csv == "1";
  return options;
}

L2hOptions l2h_options(const Settings& s, int option1) {
  L2hOptions options;
  options.remarks.write_state = s.write_state == 1;
  options.remarks.state_place = s.state_remarks;
  options.remarks.state_prefixed = s.state_after_keyword == 1;
  options.remarks.state_prefix = s.state_keyword;
  options.write_qth = s.write_qth == "1";
  options.time_mode = set_time_mode(option1, true);
  return options;
}

}  // namespace tobarine
