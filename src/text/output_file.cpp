#include "text/output_file.h"

#include <cerrno>
#include <system_error>

#include "text/cp932.h"
#include "text/error.h"
#include "text/strings.h"
#include "text/temporary_file.h"

namespace tobarine {

OutputFile::OutputFile(const std::filesystem::path& path)
    : path_(path), file_(open_file(path, "wb")) {
  if (!file_) throw FileError(path, "書き込み用に開けません: " + system_reason(errno));
  static_cast<void>(std::setvbuf(file_.get(), nullptr, _IONBF, 0));
  std::error_code error;
  visible_ = std::filesystem::exists(path, error);  // not so for the devices of some systems
  buffer_.reserve(kFull + kFull / 4);
}

OutputFile::~OutputFile() {
  if (!file_) return;
  static_cast<void>(std::fwrite(buffer_.data(), 1, buffer_.size(), file_.get()));
}

void OutputFile::flush() {
  const std::size_t written = std::fwrite(buffer_.data(), 1, buffer_.size(), file_.get());
  const int error = errno;
  const bool complete = written == buffer_.size();
  buffer_.clear();
  if (!complete) throw FileError(path_, "書き込めません: " + system_reason(error));
}

void OutputFile::reach_disk() {
  if (!sync_file(file_.get())) {
    throw FileError(path_, "書き込めません: " + system_reason(errno));
  }
}

void OutputFile::close() {
  flush();
  if (std::fclose(file_.release()) != 0) {
    throw FileError(path_, "書き込めません: " + system_reason(errno));
  }
  std::error_code error;
  if (visible_ && !std::filesystem::exists(path_, error))
    throw FileError(path_, "書いている間に消されました");
}

void overwrite_start_of_file(const std::filesystem::path& path, std::string_view bytes) {
  FileHandle file = open_file(path, "r+b");
  if (!file) throw FileError(path, "書き込み用に開けません: " + system_reason(errno));
  const bool written = std::fwrite(bytes.data(), 1, bytes.size(), file.get()) == bytes.size();
  const int error = errno;
  const bool closed = std::fclose(file.release()) == 0;
  if (!written || !closed) {
    throw FileError(path, "書き込めません: " + system_reason(written ? errno : error));
  }
}

void replace_file(const std::filesystem::path& path, std::string_view bytes) {
  TemporaryFile beside({path.parent_path()}, path_text(path.filename()));
  OutputFile file(beside.path());
  file.buffer().assign(bytes);
  file.flush();
  file.reach_disk();
  file.close();
  beside.replace(path);
}

void replace_text_file(const std::filesystem::path& path, std::string_view utf8) {
  std::string text(utf8);
  replace_all(text, "\n", "\r\n");
  replace_file(path, to_cp932(text));
}

}  // namespace tobarine
