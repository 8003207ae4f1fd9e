#include "text/temporary_file.h"

#include <cerrno>
#include <cstdio>
#include <random>
#include <string>
#include <system_error>

#include "text/error.h"

namespace tobarine {
namespace {

// Fails when the file exists.
bool create(const std::filesystem::path& path) {
#ifdef _WIN32
  std::FILE* file = _wfopen(path.c_str(), L"wbx");
#else
  std::FILE* file = std::fopen(path.c_str(), "wbx");
#endif
  if (file == nullptr) return false;
  std::fclose(file);
  return true;
}

}  // namespace

TemporaryFile::TemporaryFile(const std::vector<std::filesystem::path>& folders,
                             std::string_view name) {
  constexpr int kTries = 10;
  std::random_device random;
  int error = ENOENT;
  for (const std::filesystem::path& folder : folders) {
    for (int i = 0; i < kTries; ++i) {
      path_ = folder / (std::string(name) + "-" + std::to_string(random()) + ".tmp");
      if (create(path_)) return;
      error = errno;
      if (error != EEXIST) break;
    }
  }
  throw FileError(path_, "一時ファイルを作れません: " + system_reason(error));
}

TemporaryFile::~TemporaryFile() {
  std::error_code error;
  std::filesystem::remove(path_, error);
}

}  // namespace tobarine
