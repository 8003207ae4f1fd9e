#include "text/error.h"

#include <algorithm>
#include <cerrno>
#include <iterator>

#include "text/printable.h"

namespace tobarine {
namespace {

namespace fs = std::filesystem;

struct Reason {
  int number;
  std::string_view text;
};

constexpr Reason kReasons[] = {
    {ENOENT, "ファイルがありません (名前と場所を確かめて下さい)"},
    {EACCES, "アクセスが許可されていません"},
    {EPERM, "アクセスが許可されていません"},
    {EISDIR, "フォルダーです (ファイルを指定して下さい)"},
    {ENOTDIR, "途中の名前がフォルダーではありません"},
    {EEXIST, "同じ名前のものが既にあります"},
    {ENOTEMPTY, "フォルダーが空ではありません"},
    {ENOSPC, "ディスクの空き容量がありません (空きを作って、もう一度試して下さい)"},
    {EROFS, "書き込みできないディスクです"},
    {EFBIG, "ファイルが大きすぎます"},
    {EIO, "ディスクや機器が読み書きに失敗しました"},
    {ENXIO, "機器がありません"},
    {ENODEV, "機器がありません"},
    {EBUSY, "ほかのプログラムが使っています。閉じるか、終わるのを待って、もう一度試して下さい"},
    {EAGAIN, "今は使えません (もう一度試して下さい)"},
    {EINTR, "割り込まれました (もう一度試して下さい)"},
    {ENOMEM, "メモリーが足りません"},
    {EMFILE, "開いているファイルが多すぎます"},
    {ENFILE, "システムで開いているファイルが多すぎます"},
    {ENAMETOOLONG, "名前が長すぎます"},
    {EINVAL, "名前か使い方が正しくありません"},
    {EILSEQ, "名前に使えない文字があります"},
    {EBADF, "ファイルが閉じられています"},
    {EXDEV, "別のディスクへは移せません"},
    {EMLINK, "リンクが多すぎます"},
    {ESPIPE, "途中から読めるファイルではありません (パイプなど)"},
    {EPIPE, "出力先が閉じられました"},
    {ENOLCK, "ファイルをロックできません"},
    {ENOSYS, "このシステムではできません"},
    {ENOTSUP, "このディスクではできません"},
    {ETIMEDOUT, "時間切れです"},
    {EOVERFLOW, "ファイルが大きすぎます"},
    {ELOOP, "リンクが輪になっています"},
    {ETXTBSY, "実行中のファイルです"},
#ifndef _WIN32
    {EDQUOT, "ディスクの割り当てを使い切りました (空きを作って、もう一度試して下さい)"},
    {ESTALE, "ネットワークのファイルが失われました (もう一度試して下さい)"},
    {EHOSTDOWN, "ファイルのある機器が動いていません"},
#endif
};

// A copy of what came through a pipe has no name that would tell the user anything.
std::string shown(const fs::path& file) {
  std::string text = path_text(file);
  return text.starts_with("/proc/self/fd/") ? "標準入力またはパイプ" : text;
}

}  // namespace

std::filesystem::path path_from_text(std::string_view utf8) {
  return std::u8string(utf8.begin(), utf8.end());
}

std::string path_text(const std::filesystem::path& path) {
  const std::u8string text = path.u8string();
  return {text.begin(), text.end()};
}

std::string system_reason(int error_number) {
  const auto* const found = std::ranges::find(kReasons, error_number, &Reason::number);
  if (found != std::end(kReasons)) return std::string(found->text);
  return "システムのエラー " + std::to_string(error_number);
}

std::string system_reason(int error_number, const fs::path& file) {
  const fs::path folder = file.parent_path();
  std::error_code error;
  const bool missing = error_number == ENOENT || error_number == ENOTDIR;
  if (missing && !folder.empty() && !fs::is_directory(folder, error)) {
    return "フォルダー " + path_text(folder) + " がありません (場所を確かめるか、作って下さい)";
  }
  return system_reason(error_number);
}

std::string system_reason(const std::error_code& error, const fs::path& file) {
  return system_reason(error.default_error_condition().value(), file);
}

Error::Error(std::string_view text) : std::runtime_error(printable(text)) {}

FileError::FileError(const std::filesystem::path& file, std::string_view reason)
    : Error(shown(file) + ": " + std::string(reason)) {}

RecordError::RecordError(const std::filesystem::path& file, std::size_t line,
                         std::string_view reason)
    : Error(shown(file) + ": " + std::to_string(line) + " 行目: " + std::string(reason)) {}

NetworkError::NetworkError(std::string_view url, std::string_view reason)
    : Error(std::string(url) + ": " + std::string(reason)) {}

}  // namespace tobarine
