#include "text/open_file.h"

#include <cerrno>

#ifdef _WIN32
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <io.h>
#include <share.h>
#include <string>
#include <sys/stat.h>
#include <windows.h>
#else
#include <csignal>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace tobarine {

FileHandle open_file(const std::filesystem::path& path, const char* mode) {
#ifdef _WIN32
  return FileHandle(_wfopen(path.c_str(), std::wstring(mode, mode + std::strlen(mode)).c_str()));
#else
  return FileHandle(std::fopen(path.c_str(), mode));
#endif
}

#ifdef _WIN32

FileHandle open_and_hold(const std::filesystem::path& path, bool must_be_new) {
  const int flags = _O_WRONLY | _O_CREAT | _O_BINARY | _O_NOINHERIT | (must_be_new ? _O_EXCL : 0);
  const int file = _wsopen(path.c_str(), flags, _SH_DENYWR, _S_IREAD | _S_IWRITE);
  if (file < 0) {
    if (_doserrno == ERROR_SHARING_VIOLATION) errno = EBUSY;
    return {};
  }
  return FileHandle(_fdopen(file, "wb"));
}

bool cut_file(std::FILE* file, std::uint64_t size) {
  return seek_to(file, size) &&
         SetEndOfFile(reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(file)))) != 0;
}

void survive_size_limit() {}

#else

FileHandle open_and_hold(const std::filesystem::path& path, bool must_be_new) {
  constexpr int kTries = 100;
  for (int i = 0; i < kTries; ++i) {
    const int flags = O_WRONLY | O_CREAT | O_CLOEXEC | (must_be_new ? O_EXCL : 0);
    const int file = open(path.c_str(), flags, 0666);
    if (file < 0) return {};
    struct stat opened {};
    struct stat there {};
    const bool regular = fstat(file, &opened) == 0 && S_ISREG(opened.st_mode);
    // A file system that knows no locks is written on all the same.
    const bool held = regular && flock(file, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
    // Between the two calls it may have been renamed: what is there now is another file then.
    const bool moved = regular && (stat(path.c_str(), &there) != 0 ||
                                   there.st_ino != opened.st_ino || there.st_dev != opened.st_dev);
    if (!held && !moved) return FileHandle(fdopen(file, "wb"));
    close(file);
    if (held) break;
  }
  errno = EBUSY;
  return {};
}

bool cut_file(std::FILE* file, std::uint64_t size) {
  return ftruncate(fileno(file), static_cast<off_t>(size)) == 0;
}

void survive_size_limit() {
  static_cast<void>(std::signal(SIGXFSZ, SIG_IGN));
}

#endif

bool sync_file(std::FILE* file) {
#ifdef _WIN32
  return _commit(_fileno(file)) == 0;
#else
  return fsync(fileno(file)) == 0;
#endif
}

bool seek_to(std::FILE* file, std::uint64_t offset) {
#ifdef _WIN32
  return _fseeki64(file, static_cast<long long>(offset), SEEK_SET) == 0;
#else
  return fseeko(file, static_cast<off_t>(offset), SEEK_SET) == 0;
#endif
}

}  // namespace tobarine
