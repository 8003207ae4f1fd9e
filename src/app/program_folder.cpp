#include "app/program_folder.h"

#include <cstdlib>
#include <string_view>
#include <system_error>

#include "app/delivered_files.h"
#include "rules/version.h"
#include "text/error.h"
#include "text/folder.h"
#include "text/temporary_file.h"

namespace tobarine {
namespace {

namespace fs = std::filesystem;

constexpr const char* kFolderName = "tobarine";

bool has_reference_files(const fs::path& folder) {
  return missing_reference_files(folder).size() < reference_files().size();
}

bool is_filled_folder(const fs::path& folder) {
  std::error_code error;
  return fs::is_directory(folder, error) && !fs::is_empty(folder, error) && !error;
}

fs::path environment(const std::string& name) {
#ifdef _WIN32
  const wchar_t* const value = _wgetenv(std::wstring(name.begin(), name.end()).c_str());
#else
  const char* const value = std::getenv(name.c_str());
#endif
  return value == nullptr ? fs::path() : fs::path(value);
}

// Gone with its owner unless it was renamed.
class TemporaryFolder {
 public:
  explicit TemporaryFolder(const fs::path& parent) {
    for (;;) {
      path_ = parent / temporary_name(kFolderName);
      std::error_code error;
      if (fs::create_directory(path_, error)) return;
      if (error) throw FileError(path_, "作れません: " + system_reason(error.value()));
    }
  }
  ~TemporaryFolder() {
    std::error_code error;
    fs::remove_all(path_, error);
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  const fs::path& path() const { return path_; }

 private:
  fs::path path_;
};

}  // namespace

std::string folder_text(const fs::path& folder) {
  fs::path with_separator = folder;
  with_separator.make_preferred();
  std::string text = path_text(with_separator);
  const auto separator = static_cast<char>(fs::path::preferred_separator);
  if (text.empty() || text.back() != separator) text += separator;
  return text;
}

FolderHints folder_hints(const fs::path& home, const fs::path& executable) {
  FolderHints hints{home.empty() ? environment("TOBARINE_HOME") : home, executable, {}};
#ifdef _WIN32
  hints.user_data = environment("LOCALAPPDATA");
#else
  hints.user_data = environment("XDG_DATA_HOME");
  if (!hints.user_data.is_absolute()) hints.user_data = environment("HOME") / ".local" / "share";
  if (!hints.user_data.is_absolute()) hints.user_data.clear();
#endif
  return hints;
}

ProgramFolder locate_program_folder(const FolderHints& hints) {
  std::error_code error;
  if (!hints.home.empty()) {
    if (!fs::is_directory(hints.home, error)) {
      throw FileError(hints.home, "プログラムフォルダーがありません");
    }
    return {fs::absolute(hints.home), {}, {}};
  }
  const fs::path beside = hints.executable.parent_path();
  const fs::path user = hints.user_data.empty() ? fs::path() : hints.user_data / kFolderName;
  const bool copied = !user.empty() && is_filled_folder(user);
  if (has_reference_files(beside)) {
    if (copied && !can_write_into(beside)) return {user, beside, user};
    return {beside, {}, user};
  }
  const fs::path installed = (beside / ".." / "share" / kFolderName).lexically_normal();
  const bool is_installed = has_reference_files(installed);
  if (copied) return {user, is_installed ? installed : fs::path(), user};
  if (is_installed) return {installed, installed, user};
  throw FileError(beside, "必要なファイル (" + reference_files().front() + " など) がありません");
}

bool can_write_into(const fs::path& folder) {
  try {
    const TemporaryFile probe({folder}, kFolderName);
    return true;
  } catch (const FileError&) {
    return false;
  }
}

bool is_only_read(const ProgramFolder& folder) {
  return folder.path == folder.delivered;
}

fs::path writable_folder(const ProgramFolder& folder) {
  const bool may_copy = !folder.user_copy.empty() && folder.path != folder.user_copy;
  const bool must_copy = is_only_read(folder) || (may_copy && !can_write_into(folder.path));
  return must_copy ? make_user_copy(folder) : folder.path;
}

fs::path make_user_copy(const ProgramFolder& folder) {
  if (folder.user_copy.empty()) {
    throw FileError(folder.path,
                    "書き込むための写しを作る所が分かりません。環境変数 HOME か "
                    "--home で場所を指定して下さい");
  }
  const fs::path parent = folder.user_copy.parent_path();
  std::error_code error;
  fs::create_directories(parent, error);
  if (!error) {
    remove_leftovers(parent);
    const TemporaryFolder copy(parent);
    copy_delivered_files(folder.path, copy.path());
    fs::remove(folder.user_copy, error);  // an empty folder, where renaming does not replace it
    fs::rename(copy.path(), folder.user_copy, error);
  }
  // Another program may have been first.
  if (error && !is_filled_folder(folder.user_copy)) {
    throw FileError(folder.user_copy, "作れません: " + system_reason(error, folder.user_copy));
  }
  return folder.user_copy;
}

std::optional<fs::path> usable_folder(const ProgramFolder& folder,
                                      const std::function<bool(const std::string&)>& ask) {
  if (is_only_read(folder)) return make_user_copy(folder);
  if (can_write_into(folder.path)) return folder.path;
  if (folder.user_copy.empty() || folder.path == folder.user_copy) {
    throw FileError(folder.path,
                    "プログラムフォルダーに書き込めません。設定や変換テーブルを書くので、"
                    "Tobarine をフォルダーごと、ドキュメントなど書き込める所に移して下さい");
  }
  const bool yes = ask("Tobarine のフォルダーに書き込めません。\r\n" + path_text(folder.path) +
                       "\r\n\r\n設定と変換テーブルを、書き込める次の所に置いて続けますか？\r\n" +
                       path_text(folder.user_copy) +
                       "\r\n\r\n(Tobarine をフォルダーごとドキュメントなどに移しても使えます)");
  if (!yes) return std::nullopt;
  return make_user_copy(folder);
}

std::string refresh_user_copy(const ProgramFolder& folder, bool told) {
  if (!folder.user_copy.empty()) remove_leftovers(folder.user_copy.parent_path());
  if (folder.path != folder.user_copy || folder.delivered.empty()) return {};
  const DeliveryNews news = bring_in_deliveries(folder.delivered, folder.path, told);
  return delivery_text(news, folder.delivered, folder.path);
}

const std::vector<std::string>& reference_files() {
  static const std::vector<std::string> files = {
      "h2l_cty.mas",  "l2h_cty.mas",  "dxcc_hl.dat",  "JCC_JCG.mas",
      "dxcc_mas.txt", "band_tbl.ini", "mode_tbl.ini", "変換テーブルの説明.txt"};
  return files;
}

std::vector<std::string> missing_reference_files(const fs::path& folder) {
  std::vector<std::string> missing;
  std::error_code error;
  for (const std::string& name : reference_files()) {
    if (!fs::exists(file_in(folder, name), error)) missing.push_back(name);
  }
  return missing;
}

std::string missing_files_text(const fs::path& folder, const std::vector<std::string>& missing) {
  std::string text;
  for (const std::string& name : missing) text += folder_text(folder) + name + "\r\n\r\n";
  return text + "\r\n一旦、終了しますので、不足ファイルをコピー後に再度起動して下さい";
}

std::string missing_files_title() {
  return "　　必要なファイルがありません！　 Tobarine.exe　" + std::string(kVersion);
}

std::vector<std::filesystem::path> temporary_folders(const std::filesystem::path& program_folder) {
  std::vector<std::filesystem::path> folders;
#ifdef _WIN32
  folders.push_back(program_folder.root_path());
#else
  static_cast<void>(program_folder);
#endif
  std::error_code error;
  const std::filesystem::path system = std::filesystem::temp_directory_path(error);
  folders.push_back(error ? std::filesystem::path("/tmp") : system);
  return folders;
}

}  // namespace tobarine
