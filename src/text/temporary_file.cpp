#include "text/temporary_file.h"

#include <cerrno>
#include <charconv>
#include <optional>
#include <random>
#include <string>
#include <system_error>

#include "text/error.h"
#include "text/file_identity.h"
#include "text/strings.h"
#include "text/utf8.h"

#ifdef _WIN32
#include <windows.h>
#else
#include <csignal>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace tobarine {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kMark = ".tobarine-";
constexpr std::string_view kEnding = ".tmp";

#ifdef _WIN32

unsigned long this_process() {
  return GetCurrentProcessId();
}

bool is_running(unsigned long process) {
  const HANDLE handle = OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, process);
  if (handle == nullptr) return GetLastError() != ERROR_INVALID_PARAMETER;
  CloseHandle(handle);
  return true;
}

bool is_ours(const fs::path& /*file*/) {
  return true;
}

#else

unsigned long this_process() {
  return static_cast<unsigned long>(getpid());
}

bool is_running(unsigned long process) {
  return kill(static_cast<pid_t>(process), 0) == 0 || errno != ESRCH;
}

bool is_ours(const fs::path& file) {
  struct stat status {};
  return lstat(file.c_str(), &status) == 0 &&
         (S_ISREG(status.st_mode) || S_ISDIR(status.st_mode)) && status.st_uid == geteuid();
}

#endif

// The process that a temporary file's name tells; nothing when it is another file's.
std::optional<unsigned long> process_of(std::string_view name) {
  const std::size_t mark = name.rfind(kMark);
  if (mark == std::string_view::npos || !name.ends_with(kEnding)) return std::nullopt;
  name.remove_suffix(kEnding.size());
  if (name.size() < mark + kMark.size()) return std::nullopt;
  name.remove_prefix(mark + kMark.size());
  const std::size_t dash = name.find('-');
  if (dash == std::string_view::npos || !all_digits(name.substr(dash + 1))) return std::nullopt;
  unsigned long process = 0;
  const char* const end = name.data() + dash;
  const auto read = std::from_chars(name.data(), end, process);
  if (read.ec != std::errc() || read.ptr != end || process == 0) return std::nullopt;
  return process;
}

}  // namespace

std::string temporary_name(std::string_view name) {
  constexpr std::size_t kMostOfName = 50;
  std::random_device random;
  return std::string(left_chars(name, kMostOfName)) + std::string(kMark) +
         std::to_string(this_process()) + "-" + std::to_string(random()) + std::string(kEnding);
}

bool TemporaryFile::create(const fs::path& folder, std::string_view name) {
  path_ = folder / path_from_text(temporary_name(name));
  if (!open_file(path_, "wbx")) return false;  // fails when the file exists
  std::error_code error;
  final_mode_ = fs::status(path_, error).permissions();
  fs::permissions(path_, fs::perms::owner_read | fs::perms::owner_write, error);
  return true;
}

TemporaryFile::TemporaryFile(const std::vector<fs::path>& folders, std::string_view name) {
  constexpr int kTries = 10;
  int error = ENOENT;
  for (const fs::path& folder : folders) {
    remove_leftovers(folder);
    for (int i = 0; i < kTries; ++i) {
      if (create(folder, name)) return;
      error = errno;
      if (error != EEXIST) break;
    }
  }
  throw FileError(path_, "一時ファイルを作れません: " + system_reason(error, path_));
}

void TemporaryFile::take_mode_of(const fs::path& file) {
  std::error_code error;
  const fs::file_status other = fs::status(file, error);
  if (fs::exists(other)) final_mode_ = other.permissions();
}

void TemporaryFile::replace(const fs::path& file) {
  std::error_code error;
  fs::permissions(path_, final_mode_, error);
  fs::rename(path_, real_file(file), error);
  if (error) throw FileError(file, "置き換えられません: " + system_reason(error, file));
}

TemporaryFile::~TemporaryFile() {
  std::error_code error;
  fs::remove(path_, error);
}

ScratchFile::ScratchFile(const std::vector<fs::path>& folders, std::string_view name)
    : file_(folders, name), path_(file_.path()) {
#ifdef __linux__
  held_ = open_file(path_, "rb");
  if (!held_) return;
  const fs::path nameless = "/proc/self/fd/" + std::to_string(fileno(held_.get()));
  std::error_code error;
  if (!fs::equivalent(nameless, path_, error)) return;  // no /proc in a bare chroot
  fs::remove(path_, error);
  if (!error) path_ = nameless;
#endif
}

void remove_leftovers(const fs::path& folder) {
  std::error_code error;
  for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
       entry.increment(error)) {
    const auto process = process_of(path_text(entry->path().filename()));
    if (!process || is_running(*process) || !is_ours(entry->path())) continue;
    std::error_code kept;
    fs::remove_all(entry->path(), kept);
  }
}

}  // namespace tobarine
