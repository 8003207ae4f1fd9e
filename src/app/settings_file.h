// `Tobarine.ini` as a window keeps it, while other windows may write it too.
#pragma once

#include <filesystem>
#include <string_view>
#include <vector>

#include "app/settings.h"

namespace tobarine {

class SettingsFile {
 public:
  explicit SettingsFile(std::filesystem::path path) : path_(std::move(path)) {}

  Settings read();  // throws FileError, RecordError

  // Writes what was changed here since the last read() or save(), and leaves what others have
  // changed in the file; returns what those options mean. Throws FileError, RecordError.
  std::vector<std::string_view> save(const Settings& mine);

 private:
  std::filesystem::path path_;
  Settings mine_;  // as they were last read or saved here
  Settings file_;  // what the file then held
};

}  // namespace tobarine
