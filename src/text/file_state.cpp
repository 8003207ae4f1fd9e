#include "text/file_state.h"

#include <sys/stat.h>

#include "text/error.h"

#ifdef _WIN32
#include <io.h>
#endif

namespace tobarine {
namespace {

#ifdef _WIN32

using Status = struct _stat64;

bool status_of(std::FILE* file, Status& status) {
  return _fstat64(_fileno(file), &status) == 0;
}

bool status_of(const std::filesystem::path& path, Status& status) {
  return _wstat64(path.c_str(), &status) == 0;
}

FileState regular_state(const Status& status) {
  if ((status.st_mode & _S_IFMT) != _S_IFREG) return {};
  return {static_cast<std::uint64_t>(status.st_size), status.st_mtime, 0};
}

#else

using Status = struct stat;

bool status_of(std::FILE* file, Status& status) {
  return fstat(fileno(file), &status) == 0;
}

bool status_of(const std::filesystem::path& path, Status& status) {
  return stat(path.c_str(), &status) == 0;
}

FileState regular_state(const Status& status) {
  constexpr std::int64_t kNanoseconds = 1'000'000'000;
  if (!S_ISREG(status.st_mode)) return {};
  return {static_cast<std::uint64_t>(status.st_size),
          status.st_mtim.tv_sec * kNanoseconds + status.st_mtim.tv_nsec,
          status.st_ino ^ static_cast<std::uint64_t>(status.st_dev) << 48};
}

#endif

template <typename File>
FileState state(const File& file) {
  Status status{};
  return status_of(file, status) ? regular_state(status) : FileState();
}

}  // namespace

const char* const kChangedWhileRead =
    "読んでいる間に書き換えられました。このファイルを使っているソフトを閉じて、もう一度試して下さ"
    "い";

FileState state_of(std::FILE* file) {
  return state(file);
}

FileState state_of(const std::filesystem::path& path) {
  return state(path);
}

void InputWatch::check() const {
  if (state_of(input_) != begun_) throw FileError(input_, kChangedWhileRead);
}

}  // namespace tobarine
