#include "text/readable_input.h"

#include <cerrno>
#include <cstdio>
#include <system_error>

#include "text/error.h"

#ifdef _WIN32
#include <fcntl.h>
#include <io.h>
#endif

namespace tobarine {
namespace {

namespace fs = std::filesystem;

void use_bytes(std::FILE* stream) {
#ifdef _WIN32
  static_cast<void>(_setmode(_fileno(stream), _O_BINARY));
#else
  static_cast<void>(stream);
#endif
}

void copy(std::FILE* from, const fs::path& from_name, std::FILE* to, const fs::path& to_name) {
  std::vector<char> buffer(std::size_t{1} << 18);
  for (;;) {
    const std::size_t got = std::fread(buffer.data(), 1, buffer.size(), from);
    if (got < buffer.size() && std::ferror(from) != 0) {
      throw FileError(from_name, "読めません: " + system_reason(errno));
    }
    if (std::fwrite(buffer.data(), 1, got, to) < got || (got == 0 && std::fflush(to) != 0)) {
      throw FileError(to_name, "書き込めません: " + system_reason(errno));
    }
    if (got == 0) return;
  }
}

}  // namespace

ReadableInput::ReadableInput(const fs::path& given, const std::vector<fs::path>& folders)
    : path_(given) {
  const bool standard = given == "-";
  std::error_code error;
  const fs::file_status status = fs::status(given, error);
  const bool readable_once =
      fs::exists(status) && !fs::is_regular_file(status) && !fs::is_directory(status);
  if (!standard && !readable_once) return;
  FileHandle opened;
  if (standard) {
    use_bytes(stdin);
  } else if (opened = open_file(given, "rb"); !opened) {
    throw FileError(given, "開けません: " + system_reason(errno, given));
  }
  path_ = copy_.emplace(folders, "input").path();
  const FileHandle to = open_file(path_, "wb");
  if (!to) throw FileError(path_, "書き込み用に開けません: " + system_reason(errno));
  copy(standard ? stdin : opened.get(), standard ? "標準入力" : given, to.get(), path_);
}

void copy_to_standard_output(const fs::path& file) {
  const FileHandle from = open_file(file, "rb");
  if (!from) throw FileError(file, "開けません: " + system_reason(errno, file));
  use_bytes(stdout);
  copy(from.get(), file, stdout, "標準出力");
}

}  // namespace tobarine
