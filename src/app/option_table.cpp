#include "app/option_table.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>

#include "text/strings.h"

namespace tobarine {
namespace {

using S = Settings;
using enum Option::Window;
using enum Option::Saved;
using enum Option::Form;

constexpr OptionValue kSwitch[] = {{"0", "しない"}, {"1", "する"}};
constexpr OptionValue kTimes[] = {
    {"0", "変換なし"}, {"1", "全てJST"}, {"2", "全てUTC"}, {"3", "JA局はJST"}};
constexpr OptionValue kStatePlaces[] = {{"0", "Rmks 1"}, {"1", "Rmks 2"}, {"2", "不特定"}};
constexpr OptionValue kZones[] = {{"0", "UTC"}, {"1", "JST"}};
constexpr OptionValue kRemarks[] = {{"1", "Rmks 1"}, {"2", "Rmks 2"}};
constexpr OptionValue kZlogTimes[] = {{"None", "変換なし"},
                                      {"ALL_J", "全てJST"},
                                      {"ALL_U", "全てUTC"},
                                      {"ALL_J_adi", "全てJST (メインの窓で選んだもの)"},
                                      {"J_2_U", "変換なし (メインの窓の「JA局はJST」)"}};
constexpr std::span<const OptionValue> kAnyText;

// clang-format off
constexpr Option kOptions[] = {
    {"use_rmks1", "Config", "Chk_1", &S::use_rmks1, "1", kMain, "Check1", kSwitch,
     "Rmks 1 を COMMENT に転記する"},
    {"use_rmks2", "Config", "Chk_2", &S::use_rmks2, "1", kMain, "Check2", kSwitch,
     "Rmks 2 を COMMENT に転記する"},
    {"leave_out_jst", "Config", "Chk_3", &S::leave_out_jst, "0", kMain, "Check3", kSwitch,
     "時刻が JST の交信を出力しない"},
    {"leave_out_japanese_codes", "Config", "Chk_4", &S::leave_out_japanese_codes, "0", kMain,
     "Check4", kSwitch, "Code が 500A 以下 (国内) の交信を出力しない"},
    {"keep_full_width_rmks1", "Config", "Chk_5", &S::keep_full_width_rmks1, "0", kMain, "Check5",
     kSwitch, "全角を含む Rmks 1 も COMMENT に転記する"},
    {"keep_full_width_rmks2", "Config", "Chk_6", &S::keep_full_width_rmks2, "0", kMain, "Check6",
     kSwitch, "全角を含む Rmks 2 も COMMENT に転記する"},
    {"slash_call_in_comment", "Config", "Chk_7", &S::slash_call_in_comment, "0", kMain, "Check7",
     kSwitch, "/ を含むコールは転記を変更する (eQSL.cc)"},
    {"write_name", "Config", "Chk_8", &S::write_name, "0", kMain, "Check8", kSwitch,
     "半角の Name を転記する"},
    {"write_state", "Config", "Chk_9", &S::write_state, "0", kMain, "Check9", kSwitch,
     "WAS の州名を転記する"},
    {"state_after_keyword", "Config", "Chk_10", &S::state_after_keyword, "0", kMain, "Check10",
     kSwitch, "州名を接頭語の直後から取る (ADIF からは接頭語を付けて書く)"},
    {"state_after_keyword_or_alone", "Config", "Chk_11", &S::state_after_keyword_or_alone, "0",
     kMain, "Check11", kSwitch, "州名を接頭語の直後から、無ければ独立した語から取る"},
    {"time_conversion", "Config", "Op_1", &S::time_conversion, "2", kMain, "Option1", kTimes,
     "窓での時刻の変換 (コマンドでは l2h の --time)"},
    {"state_remarks", "Config", "Op_2", &S::state_remarks, "2", kMain, "Option2", kStatePlaces,
     "州名のある欄、書く欄"},
    {"state_keyword", "Config", "was_moji", &S::state_keyword, "WAS=", kMain, "txtWas", kAnyText,
     "州名の接頭語", kLater},
    {"year_from_system", "Config", "Chk_12", &S::year_from_system, "0", kMain, "Check12", kSwitch,
     "年をシステムの日付から取る"},
    {"check_lists_at_start", "Config", "Chk_13", &S::check_lists_at_start, "0", kMain, "Check13",
     kSwitch, "窓を開いた時に JCC JCG の更新日付けを調査する", kLater},
    {"dx_marker_in_comment", "Config", "Chk_14", &S::dx_marker_in_comment, "0", kMain, "Check14",
     kSwitch, "P5/4Q4QQ 形式時の $DX を COMMENT に転記する", kLater},
    {"write_trace_log", "Config", "Chk_15", &S::write_trace_log, "1", kMain, "Check15", kSwitch,
     "窓の動きの記録 (年月日_時分秒.txt) を残す"},
    {"write_qth", "Config", "Chk_16", &S::write_qth, "", kMain, "Check16", kSwitch,
     "QTH を転記する"},
    {"year", "Config", "set_YYYY", &S::year, "", kMain, "txtYYYY", kAnyText, "年", kAtOnce,
     kNumberText},
    {"zlog_in_jst", "Config", "Op_3", &S::zlog_in_jst, "0", kMain, "Option3", kZones,
     "zLog のデータの時刻"},
    {"jcc_list_date", "JCC_JCG", "JCC_date", &S::jcc_list_date, "", kNone, "", kAnyText,
     "最後に取り込んだ JCC リストの日付 yyyy/mm/dd"},
    {"jcg_list_date", "JCC_JCG", "JCG_date", &S::jcg_list_date, "", kNone, "", kAnyText,
     "最後に取り込んだ JCG リストの日付 yyyy/mm/dd"},
    {"sent_number", "set_STX", "set_STX", &S::sent_number, "", kZlog, "Text7", kAnyText,
     "ADIF から zLog: STX が無い交信の送信番号", kAtOnce, kNumberText},
    {"zlog_time", "utc_jst_str", "utc_jst_str", &S::zlog_time, "", kZlog, "Option2", kZlogTimes,
     "ADIF から zLog: 時刻の変換"},
    {"drop_power_letter", "del_power_flag", "del_power_flag", &S::drop_power_letter, "", kZlog,
     "Check2", kSwitch, "ADIF から zLog: 受信番号の電力の文字 H/M/L/P を取る"},
    {"all_in_jst", "zlog_all_jst", "zlog_all_jst", &S::all_in_jst, "", kZlog, "Check1", kSwitch,
     "ADIF から zLog: .all を全て JST に変換する"},
    {"whole_mhz_unused", "Tobarine", "freq_only_MHz_1", &S::whole_mhz_unused, "", kNone, "",
     kAnyText, "使われません (ファイルに残すだけです)"},
    {"write_operator", "ADIF_2_zLog_all", "OP_name_tenki", &S::write_operator, "", kZlog, "Check4",
     kSwitch, "ADIF から zLog: OP name を転記する"},
    {"write_tx_number", "ADIF_2_zLog_all", "TX_NR_tenki", &S::write_tx_number, "", kZlog, "Check11",
     kSwitch, "ADIF から zLog: TX# を転記する"},
    {"write_comment", "ADIF_2_zLog_all", "COMMENT_tenki", &S::write_comment, "", kZlog, "Check10",
     kSwitch, "ADIF から zLog: COMMENT を転記する"},
    {"write_age", "ADIF_2_zLog_all", "AGE_tenki", &S::write_age, "", kZlog, "Check12", kSwitch,
     "ADIF から zLog: AGE を転記する"},
    {"write_iota", "ADIF_2_zLog_all", "IOTA_tenki", &S::write_iota, "", kZlog, "Check13", kSwitch,
     "ADIF から zLog: IOTA を転記する"},
    {"tx_number_remarks", "ADIF_2_zLog_all", "TX_NR_rmks", &S::tx_number_remarks, "", kZlog,
     "Combo11", kRemarks, "ADIF から zLog: CSV で TX# を書く欄"},
    {"comment_remarks", "ADIF_2_zLog_all", "COMMENT_rmks", &S::comment_remarks, "", kZlog,
     "Combo10", kRemarks, "ADIF から zLog: CSV で COMMENT を書く欄"},
    {"age_remarks", "ADIF_2_zLog_all", "AGE_rmks", &S::age_remarks, "", kZlog, "Combo12", kRemarks,
     "ADIF から zLog: CSV で AGE を書く欄"},
    {"iota_remarks", "ADIF_2_zLog_all", "IOTA_rmks", &S::iota_remarks, "", kZlog, "Combo13",
     kRemarks, "ADIF から zLog: CSV で IOTA を書く欄"},
    {"running_number", "ADIF_2_zLog_all", "TX_NR_001", &S::running_number, "", kZlog, "Check7",
     kSwitch, "ADIF から zLog: 送信番号を 001 からの通し番号にする"},
    {"whole_mhz", "ADIF_2_zLog_all", "freq_only_MHz_2", &S::whole_mhz, "", kZlog, "Check8", kSwitch,
     "ADIF から zLog: CSV の周波数を MHz 単位のみにする"},
    {"write_qth_to_csv", "ADIF_2_zLog_all", "csv_qth", &S::write_qth_to_csv, "", kZlog, "Check5",
     kSwitch, "ADIF から zLog: QTH を CSV に転記する"},
    {"zlog_zone_chosen", "zLog", "zone_chosen", &S::zlog_zone_chosen, "", kNone, "", kSwitch,
     "zLog のデータの時刻を選んだことがある (窓は .ALL を開く時に尋ねない)", kOnceChosen},
    {"hamlog_folder", "Hamlog", "hamlog_folder", &S::hamlog_folder, "", kNone, "", kAnyText,
     "Hamlog50.dll のある Turbo HAMLOG のフォルダー (Windows で Hamlog.hdb を読むため)", kOnceChosen,
     kPath},
};
// clang-format on

// Rounds halves to the even neighbour; what does not fit becomes the nearest end.
std::int16_t to_int16(std::string_view text) {
  constexpr double kMost = std::numeric_limits<std::int16_t>::max();
  return static_cast<std::int16_t>(std::min(std::nearbyint(leading_number(text)), kMost));
}

}  // namespace

std::span<const Option> option_table() {
  return kOptions;
}

const Option* find_option(std::string_view name) {
  const auto* const found = std::ranges::find_if(kOptions, [name](const Option& option) {
    return equal_ignoring_case(option.name, name) || equal_ignoring_case(option.key, name);
  });
  return found == std::end(kOptions) ? nullptr : found;
}

const Option* find_option(Option::Window window, std::string_view control) {
  const auto* const found = std::ranges::find_if(kOptions, [=](const Option& option) {
    return option.window == window && option.control == control;
  });
  return found == std::end(kOptions) ? nullptr : found;
}

std::string option_value(const Settings& settings, const Option& option) {
  if (const auto* number = std::get_if<std::int16_t S::*>(&option.member)) {
    return std::to_string(settings.**number);
  }
  return settings.*std::get<std::string S::*>(option.member);
}

void set_option(Settings& settings, const Option& option, std::string_view value) {
  if (const auto* number = std::get_if<std::int16_t S::*>(&option.member)) {
    settings.** number = to_int16(value);
  } else {
    settings.*std::get<std::string S::*>(option.member) = value;
  }
}

std::string allowed_values(const Option& option) {
  if (option.values.empty()) return "文字";
  std::string text;
  for (const OptionValue& value : option.values) {
    if (!text.empty()) text += "、";
    text.append(value.value).append(" (").append(value.meaning).append(")");
  }
  return text;
}

void show_option(const Settings& settings, Option::Window window, std::string_view name,
                 Control& control) {
  if (const Option* const option = find_option(window, name)) {
    const std::string value = option_value(settings, *option);
    if (name.starts_with("Check")) {
      control.checked = value == "1";
      return;
    }
    // An empty number is read back from the file as "0".
    const bool empty = option->form == kNumberText && value == "0";
    control.text = empty ? "" : value;
    if (!option->values.empty() &&
        std::ranges::find(option->values, value, &OptionValue::value) == option->values.end()) {
      control.text = option->values.front().value;
    }
    return;
  }
  const std::size_t end = name.find('_');
  const Option* const group = find_option(window, name.substr(0, end));
  if (end == std::string_view::npos || group == nullptr) return;
  const auto index = static_cast<std::size_t>(leading_number(name.substr(end + 1)));
  control.checked =
      index < group->values.size() && group->values[index].value == option_value(settings, *group);
}

}  // namespace tobarine
