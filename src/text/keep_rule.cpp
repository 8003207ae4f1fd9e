#include "text/keep_rule.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <string>
#include <system_error>

#include "text/error.h"
#include "text/open_file.h"

namespace tobarine {

namespace fs = std::filesystem;

namespace {

std::string stamp(const KeepRule& rule) {
  if (!rule.now) return {};
  const std::tm now = rule.now();
  std::array<char, 32> text{};
  static_cast<void>(std::strftime(text.data(), text.size(), ".%Y%m%d-%H%M%S", &now));
  return text.data();
}

[[noreturn]] void refuse(const fs::path& file, const fs::path& backup,
                         const std::error_code& error) {
  throw FileError(file, "元のファイルを " + path_text(backup.filename()) +
                            " として残せないので、書きませんでした "
                            "(ほかの窓やソフトで開いていれば閉じて下さい): " +
                            system_reason(error, file));
}

// An empty file under a name that nobody has.
fs::path reserve_name(const fs::path& file, const std::string& stamp) {
  for (int i = 1;; ++i) {
    fs::path name = file;
    name += path_from_text(stamp + (i == 1 ? "" : "-" + std::to_string(i)) + ".bak");
    if (open_file(name, "wbx")) return name;
    if (errno != EEXIST) refuse(file, name, {errno, std::generic_category()});
  }
}

}  // namespace

bool begins_with(const fs::path& file, std::string_view bytes) {
  const FileHandle handle = open_file(file, "rb");
  std::string start(bytes.size(), '\0');
  return handle && std::fread(start.data(), 1, start.size(), handle.get()) == start.size() &&
         start == bytes;
}

bool is_kept(const fs::path& file, const KeepRule& rule) {
  std::error_code error;
  if (!rule.may_go || !fs::is_regular_file(file, error)) return false;
  const std::uintmax_t size = fs::file_size(file, error);
  return !error && size > 0 && !rule.may_go(file);
}

fs::path move_aside(const fs::path& real, const KeepRule& rule) {
  fs::path backup = reserve_name(real, stamp(rule));
  std::error_code error;
  fs::rename(real, backup, error);
  if (error) {
    std::error_code ignored;
    fs::remove(backup, ignored);
    refuse(real, backup, error);
  }
  return backup;
}

}  // namespace tobarine
