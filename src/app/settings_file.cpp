#include "app/settings_file.h"

#include <system_error>

#include "app/option_table.h"

namespace tobarine {

Settings SettingsFile::read() {
  return mine_ = file_ = read_settings(path_);
}

std::vector<std::string_view> SettingsFile::save(const Settings& mine) {
  std::vector<std::string_view> others;
  Settings wanted = mine;
  std::error_code error;
  if (std::filesystem::exists(path_, error)) {
    const Settings now = read_settings(path_);
    for (const Option& option : option_table()) {
      if (option_value(mine, option) != option_value(mine_, option)) continue;
      const std::string value = option_value(now, option);
      set_option(wanted, option, value);
      if (value != option_value(file_, option)) others.push_back(option.meaning);
    }
  }
  write_settings(wanted, path_);
  mine_ = mine;
  file_ = read_settings(path_);
  return others;
}

}  // namespace tobarine
