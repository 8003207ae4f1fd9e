// A folder of its own for each test, gone afterwards.
#pragma once

#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>
#include <string>
#include <string_view>

#include "text/cp932.h"
#include "text/error.h"

namespace tobarine {

class TestFolder {
 public:
  TestFolder() {
    std::random_device random;
    do {  // no dot: outputs end at the first one
      path_ = std::filesystem::temp_directory_path() / ("tobarine-" + std::to_string(random()));
    } while (!std::filesystem::create_directory(path_));
  }
  ~TestFolder() { std::filesystem::remove_all(path_); }
  TestFolder(const TestFolder&) = delete;
  TestFolder& operator=(const TestFolder&) = delete;

  const std::filesystem::path& path() const { return path_; }
  std::filesystem::path operator/(std::string_view name) const {
    return path_ / path_from_text(name);
  }

  // Writes the bytes and returns the path.
  std::filesystem::path file(std::string_view name, std::string_view bytes) const {
    std::ofstream(*this / name, std::ios::binary) << bytes;
    return *this / name;
  }

  // The same with a UTF-8 text, written as CP932.
  std::filesystem::path text(std::string_view name, std::string_view utf8) const {
    return file(name, to_cp932(utf8));
  }

  static std::string bytes_of(const std::filesystem::path& path) {
    std::ostringstream bytes;
    bytes << std::ifstream(path, std::ios::binary).rdbuf();
    return bytes.str();
  }

 private:
  std::filesystem::path path_;
};

}  // namespace tobarine
