// The user's options, kept in `Tobarine.ini` of the program folder. Names are the file's keys.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "convert/adif_to_zlog.h"
#include "convert/h2l.h"
#include "convert/l2h.h"

namespace tobarine {

inline constexpr std::string_view kSettingsFile = "Tobarine.ini";

struct Settings {
  std::int16_t Chk_1 = 0;   // remarks 1 go into the comment
  std::int16_t Chk_2 = 0;   // remarks 2 go into the comment
  std::int16_t Chk_3 = 0;   // leave out contacts logged in JST
  std::int16_t Chk_4 = 0;   // leave out contacts with a code up to 500A
  std::int16_t Chk_5 = 0;   // remarks 1 even with full-width characters
  std::int16_t Chk_6 = 0;   // remarks 2 even with full-width characters
  std::int16_t Chk_7 = 0;   // calls with "/" change the comment (eQSL.cc)
  std::int16_t Chk_8 = 0;   // write half-width names
  std::int16_t Chk_9 = 0;   // US state
  std::int16_t Chk_10 = 0;  // the state stands behind the keyword
  std::int16_t Chk_11 = 0;  // the state stands behind the keyword or alone
  std::int16_t Op_1 = 0;    // time conversion, 0 .. 3
  std::int16_t Op_2 = 0;    // remarks that hold the state: 0, 1; 2 either
  std::string was_moji;     // the state keyword
  std::int16_t Chk_12 = 0;  // the year comes from the system date (zLog)
  std::int16_t Chk_13 = 0;  // check the JARL lists at start
  std::int16_t Chk_14 = 0;  // "$DX" goes into the comment
  std::string Chk_15;       // "1": write the trace log
  std::string Chk_16;       // "1": write the QTH
  std::string set_YYYY;     // year (zLog)
  std::int16_t Op_3 = 0;    // zLog times are 0: UTC, 1: JST
  std::string JCC_date;
  std::string JCG_date;
  std::string set_STX;          // the next are all for ADIF to zLog: number sent by all
  std::string utc_jst_str;      // time: "", "None", "ALL_J", "ALL_U"
  std::string del_power_flag;   // "1": without the received number's power letter
  std::string zlog_all_jst;     // "1": the .all in JST whatever the others are
  std::string freq_only_MHz_1;  // read and written back only
  std::string OP_name_tenki;    // "1": write the operator, and so on
  std::string TX_NR_tenki;
  std::string COMMENT_tenki;
  std::string AGE_tenki;
  std::string IOTA_tenki;
  std::string TX_NR_rmks;  // the CSV's remarks that take it: "1" or "2", and so on
  std::string COMMENT_rmks;
  std::string AGE_rmks;
  std::string IOTA_rmks;
  std::string TX_NR_001;        // "1": a running number is sent
  std::string freq_only_MHz_2;  // "1": the CSV's frequency without decimals
  std::string csv_qth;          // "1": the QTH tag goes into the CSV
};

// The values written when there is no settings file yet.
Settings first_start_settings();

// A missing key is empty or 0; values are cut to 79 characters. Throws FileError, RecordError.
Settings read_settings(const std::filesystem::path& file);

// Writes every key into the file, in the table's order, and leaves all else in it as it is. The key
// `TX_NR_rmks` is written with the value of `TX_NR_tenki`, as it always has been. Throws FileError.
void write_settings(const Settings& settings, const std::filesystem::path& file);

// Sets one value by its key; numbers are read as the file's are, texts are cut to 79 characters.
// False: no such key.
bool set_setting(Settings& settings, std::string_view name, std::string_view value);

// The options that a Hamlog-to-ADIF run takes from the settings.
H2lOptions h2l_options(const Settings& settings);

// The zone of zLog's times, 'U' (UTC) or 'J' (JST).
char zlog_zone(const Settings& settings);

// The options that an ADIF-to-zLog run takes from the settings.
AdifToZlogOptions adif_to_zlog_options(const Settings& settings);

// The options that an ADIF-to-Hamlog run takes from the settings; `option1` is the index of the
// chosen time conversion, 0 .. 3.
L2hOptions l2h_options(const Settings& settings, int option1);

}  // namespace tobarine
