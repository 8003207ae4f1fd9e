#include "targets.h"

#include <cstdlib>
#include <fstream>
#include <iostream>

#include "test_folder.h"

namespace tobarine::fuzz {

std::vector<Target> all_targets() {
  std::vector<Target> all;
  for (const auto targets :
       {log_targets(), zlog_targets(), reference_targets(), run_targets(), window_targets()}) {
    all.insert(all.end(), targets.begin(), targets.end());
  }
  return all;
}

std::filesystem::path scratch_path(std::string_view name) {
  static const TestFolder folder;
  return folder / name;
}

std::filesystem::path scratch_file(std::string_view name, std::string_view bytes) {
  std::filesystem::path path = scratch_path(name);
  std::ofstream(path, std::ios::binary) << bytes;
  return path;
}

std::string bytes_of(const std::filesystem::path& path) {
  return TestFolder::bytes_of(path);
}

void require(bool holds, const char* promise) {
  if (holds) return;
  std::cerr << "does not hold: " << promise << '\n';
  std::abort();
}

}  // namespace tobarine::fuzz
