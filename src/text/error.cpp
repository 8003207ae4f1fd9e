#include "text/error.h"

#include <cerrno>
#include <system_error>

namespace tobarine {

std::filesystem::path path_from_text(std::string_view utf8) {
  return std::u8string(utf8.begin(), utf8.end());
}

std::string path_text(const std::filesystem::path& path) {
  const std::u8string text = path.u8string();
  return {text.begin(), text.end()};
}

std::string system_reason(int error_number) {
  switch (error_number) {
    case ENOENT:
      return "ファイルがありません";
    case EACCES:
    case EPERM:
      return "アクセスが許可されていません";
    case EISDIR:
      return "フォルダーです (ファイルを指定して下さい)";
    case ENOTDIR:
      return "途中のフォルダーがありません";
    case ENOSPC:
      return "ディスクの空き容量がありません";
    case EBUSY:
      return "ほかのプログラムが使っています。閉じるか、終わるのを待って、もう一度試して下さい";
    case EROFS:
      return "書き込みできないディスクです";
    case EFBIG:
      return "ファイルが大きすぎます";
    default:
      return std::generic_category().message(error_number);
  }
}

namespace {

// A copy of what came through a pipe has no name that would tell the user anything.
std::string shown(const std::filesystem::path& file) {
  std::string text = path_text(file);
  return text.starts_with("/proc/self/fd/") ? "標準入力またはパイプ" : text;
}

}  // namespace

FileError::FileError(const std::filesystem::path& file, std::string_view reason)
    : Error(shown(file) + ": " + std::string(reason)) {}

RecordError::RecordError(const std::filesystem::path& file, std::size_t line,
                         std::string_view reason)
    : Error(shown(file) + ": " + std::to_string(line) + " 行目: " + std::string(reason)) {}

NetworkError::NetworkError(std::string_view url, std::string_view reason)
    : Error(std::string(url) + ": " + std::string(reason)) {}

}  // namespace tobarine
