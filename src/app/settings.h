// The user's options, kept in `Tobarine.ini` of the program folder.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "convert/adif_to_zlog.h"
#include "convert/h2l.h"
#include "convert/l2h.h"

namespace tobarine {

inline constexpr std::string_view kSettingsFile = "Tobarine.ini";

// What each means tells its row of the option table. Numbers are 0 or 1 and texts "" or "1", unless
// a comment says otherwise.
struct Settings {
  std::int16_t use_rmks1 = 0;
  std::int16_t use_rmks2 = 0;
  std::int16_t leave_out_jst = 0;
  std::int16_t leave_out_japanese_codes = 0;
  std::int16_t keep_full_width_rmks1 = 0;
  std::int16_t keep_full_width_rmks2 = 0;
  std::int16_t slash_call_in_comment = 0;
  std::int16_t write_name = 0;
  std::int16_t write_state = 0;
  std::int16_t state_after_keyword = 0;
  std::int16_t state_after_keyword_or_alone = 0;
  std::int16_t time_conversion = 0;  // 0 .. 3, the index of the window's button
  std::int16_t state_remarks = 0;    // 0, 1; 2: either
  std::string state_keyword;         // any text
  std::int16_t year_from_system = 0;
  std::int16_t check_lists_at_start = 0;
  std::int16_t dx_marker_in_comment = 0;
  std::string write_trace_log;
  std::string write_qth;
  std::string year;  // a number; "0": none
  std::int16_t zlog_in_jst = 0;
  std::string jcc_list_date;  // yyyy/mm/dd, or any text
  std::string jcg_list_date;
  std::string hamlog_folder;  // a path; empty: none was named
  // From here on for ADIF to zLog.
  std::string sent_number;  // any text; "0": none
  std::string zlog_time;    // a time mode's keyword
  std::string drop_power_letter;
  std::string all_in_jst;
  std::string whole_mhz_unused;  // read and written back only
  std::string write_operator;
  std::string write_tx_number;
  std::string write_comment;
  std::string write_age;
  std::string write_iota;
  std::string tx_number_remarks;  // "1" or "2", and so on
  std::string comment_remarks;
  std::string age_remarks;
  std::string iota_remarks;
  std::string running_number;
  std::string whole_mhz;
  std::string write_qth_to_csv;
  std::string zlog_zone_chosen;  // from .ALL to ADIF again
};

// The values written when there is no settings file yet.
Settings first_start_settings();

// A missing key is empty or 0; values are cut to 79 characters. Throws FileError, RecordError.
Settings read_settings(const std::filesystem::path& file);

// Writes every key into the file, in the table's order, and leaves all else in it as it is. The key
// `TX_NR_rmks` is written with the value of `TX_NR_tenki`, as it always has been. Throws FileError.
void write_settings(const Settings& settings, const std::filesystem::path& file);

// Sets one value by its name or key, texts cut to 79 characters. Throws UsageError, which lists
// what is allowed, for an unknown name and for a value that the option does not take.
void set_setting(Settings& settings, std::string_view name, std::string_view value);

// The options that a Hamlog-to-ADIF run takes from the settings.
H2lOptions h2l_options(const Settings& settings);

// The zone of zLog's times that the user has chosen, 'U' (UTC) or 'J' (JST); nothing: he never has.
std::optional<char> zlog_zone(const Settings& settings);

// The options that an ADIF-to-zLog run takes from the settings.
AdifToZlogOptions adif_to_zlog_options(const Settings& settings);

// The options that an ADIF-to-Hamlog run takes from the settings; `option1` is the index of the
// chosen time conversion, 0 .. 3.
L2hOptions l2h_options(const Settings& settings, int option1);

}  // namespace tobarine
