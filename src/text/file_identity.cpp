#include "text/file_identity.h"

#include <system_error>

#include "text/error.h"

namespace tobarine {

namespace fs = std::filesystem;

fs::path real_file(const fs::path& path) {
  constexpr int kMostLinks = 40;
  std::error_code error;
  fs::path real = path;
  for (int i = 0; i < kMostLinks && fs::is_symlink(real, error); ++i) {
    const fs::path target = fs::read_symlink(real, error);
    if (error) break;
    real = real.parent_path() / target;
  }
  return real;
}

bool same_file(const fs::path& a, const fs::path& b) {
  if (a.empty() || b.empty()) return false;
  std::error_code error;
  const fs::file_status there = fs::status(a, error);
  if (fs::is_character_file(there)) return false;
  if (fs::exists(there) && fs::exists(b, error)) return fs::equivalent(a, b, error);
  return fs::weakly_canonical(real_file(a), error) == fs::weakly_canonical(real_file(b), error);
}

void refuse_shared_files(const std::vector<fs::path>& inputs,
                         const std::vector<fs::path>& outputs) {
  for (std::size_t i = 0; i < outputs.size(); ++i) {
    for (const fs::path& input : inputs) {
      if (same_file(input, outputs[i])) {
        throw UsageError("出力が入力と同じファイルです: " + path_text(outputs[i]));
      }
    }
    for (std::size_t j = 0; j < i; ++j) {
      if (same_file(outputs[j], outputs[i])) {
        throw UsageError("二つの出力が同じファイルです: " + path_text(outputs[i]));
      }
    }
  }
}

}  // namespace tobarine
