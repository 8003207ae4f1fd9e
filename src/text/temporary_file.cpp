#include "text/temporary_file.h"

#include <cerrno>
#include <random>
#include <string>
#include <system_error>

#include "text/error.h"
#include "text/file_identity.h"
#include "text/open_file.h"

namespace tobarine {

TemporaryFile::TemporaryFile(const std::vector<std::filesystem::path>& folders,
                             std::string_view name) {
  constexpr int kTries = 10;
  std::random_device random;
  int error = ENOENT;
  for (const std::filesystem::path& folder : folders) {
    for (int i = 0; i < kTries; ++i) {
      path_ = folder / (std::string(name) + "-" + std::to_string(random()) + ".tmp");
      if (open_file(path_, "wbx")) return;  // fails when the file exists
      error = errno;
      if (error != EEXIST) break;
    }
  }
  throw FileError(path_, "一時ファイルを作れません: " + system_reason(error));
}

void TemporaryFile::take_mode_of(const std::filesystem::path& file) {
  std::error_code error;
  const std::filesystem::file_status other = std::filesystem::status(file, error);
  if (std::filesystem::exists(other)) {
    std::filesystem::permissions(path_, other.permissions(), error);
  }
}

void TemporaryFile::replace(const std::filesystem::path& file) {
  std::error_code error;
  std::filesystem::rename(path_, real_file(file), error);
  if (error) throw FileError(file, "置き換えられません: " + system_reason(error.value()));
}

TemporaryFile::~TemporaryFile() {
  std::error_code error;
  std::filesystem::remove(path_, error);
}

}  // namespace tobarine
