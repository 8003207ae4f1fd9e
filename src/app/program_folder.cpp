#include "app/program_folder.h"

#include <cerrno>
#include <system_error>

#include "rules/version.h"
#include "text/error.h"
#include "text/folder.h"
#include "text/input_file.h"
#include "text/output_file.h"

namespace tobarine {
namespace {

namespace fs = std::filesystem;

constexpr const char* kFolderName = "tobarine";

bool has_reference_files(const fs::path& folder) {
  return missing_reference_files(folder).size() < reference_files().size();
}

}  // namespace

std::string folder_text(const fs::path& folder) {
  fs::path with_separator = folder;
  with_separator.make_preferred();
  std::string text = path_text(with_separator);
  const auto separator = static_cast<char>(fs::path::preferred_separator);
  if (text.empty() || text.back() != separator) text += separator;
  return text;
}

ProgramFolder locate_program_folder(const FolderHints& hints) {
  std::error_code error;
  if (!hints.home.empty()) {
    if (!fs::is_directory(hints.home, error)) {
      throw FileError(hints.home, "プログラムフォルダーがありません");
    }
    return {fs::absolute(hints.home), std::nullopt};
  }
  const fs::path beside = hints.executable.parent_path();
  if (has_reference_files(beside)) return {beside, std::nullopt};
  const fs::path user = hints.user_data / kFolderName;
  if (!hints.user_data.empty() && has_reference_files(user)) return {user, std::nullopt};
  const fs::path installed = (beside / ".." / "share" / kFolderName).lexically_normal();
  if (has_reference_files(installed)) return {installed, user};
  throw FileError(beside, "必要なファイル (" + reference_files().front() + " など) がありません");
}

fs::path make_user_copy(const ProgramFolder& folder) {
  if (!folder.user_copy) return folder.path;
  std::error_code error;
  fs::create_directories(*folder.user_copy, error);
  for (const auto& entry : fs::directory_iterator(folder.path, error)) {
    const fs::path copy = *folder.user_copy / entry.path().filename();
    if (error || fs::exists(copy, error)) continue;
    replace_file(copy, read_whole_file(entry.path()));  // whole, whoever else does the same now
  }
  if (error) throw FileError(*folder.user_copy, "作れません: " + system_reason(error.value()));
  return *folder.user_copy;
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
