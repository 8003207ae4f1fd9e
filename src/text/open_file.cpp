#include "text/open_file.h"

#ifdef _WIN32
#include <cstring>
#include <io.h>
#include <string>
#else
#include <sys/types.h>
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
