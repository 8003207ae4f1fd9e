#include "text/output_file.h"

#include <algorithm>
#include <cerrno>
#include <system_error>

#include "text/cp932.h"
#include "text/error.h"
#include "text/file_identity.h"
#include "text/strings.h"
#include "text/temporary_file.h"

namespace tobarine {

namespace fs = std::filesystem;

namespace {

[[noreturn]] void refuse_to_open(const fs::path& path, int error) {
  throw FileError(path, "書き込み用に開けません: " + system_reason(error, path));
}

// The file held for writing, with nothing in it.
FileHandle open_empty(const fs::path& path, const KeepRule& rule) {
  for (;;) {
    FileHandle file = open_and_hold(path, false);
    if (!file) refuse_to_open(path, errno);
    if (!is_kept(path, rule)) {
      std::error_code error;
      if (!cut_file(file.get(), 0) && fs::is_regular_file(path, error)) refuse_to_open(path, errno);
      return file;
    }
    const fs::path real = real_file(path);
    std::error_code error;
    const fs::perms mode = fs::status(real, error).permissions();
#ifdef _WIN32
    file.reset();  // what is open cannot be renamed there
#endif
    const fs::path backup = move_aside(real, rule);
    FileHandle fresh = open_and_hold(real, true);
    const int reason = errno;
    const bool other_run_was_faster = !fresh && (reason == EEXIST || reason == EBUSY);
    if (!fresh && !other_run_was_faster) {
      fs::rename(backup, real, error);
      refuse_to_open(path, reason);
    }
    if (rule.told) rule.told(real, backup);
    if (other_run_was_faster) continue;
    fs::permissions(real, mode, error);
    return fresh;
  }
}

}  // namespace

OutputFile::OutputFile(const fs::path& path, const KeepRule& rule)
    : path_(path), file_(open_empty(path, rule)) {
  static_cast<void>(std::setvbuf(file_.get(), nullptr, _IONBF, 0));
  std::error_code error;
  visible_ = fs::exists(path, error);  // not so for the devices of some systems
  buffer_.reserve(kFull + kFull / 4);
}

OutputFile::~OutputFile() {
  if (!file_) return;
  try {
    flush();
  } catch (const FileError&) {  // cut back to what is whole
  }
}

void OutputFile::flush() {
  const std::size_t written = std::fwrite(buffer_.data(), 1, buffer_.size(), file_.get());
  const int error = errno;
  const bool complete = written == buffer_.size();
  if (complete) {
    bytes_ += written;
    records_ += ends_.size();
  } else {
    cut_back(written);
  }
  buffer_.clear();
  ends_.clear();
  if (!complete) throw FileError(path_, "書き込めません: " + system_reason(error));
}

// Of the buffer only these bytes are in the file.
void OutputFile::cut_back(std::size_t written) {
  const auto cut = std::ranges::upper_bound(ends_, written);
  if (cut != ends_.begin()) bytes_ += *(cut - 1);
  records_ += static_cast<std::size_t>(cut - ends_.begin());
  if (cut_file(file_.get(), bytes_)) static_cast<void>(seek_to(file_.get(), bytes_));
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
  if (!file) throw FileError(path, "書き込み用に開けません: " + system_reason(errno, path));
  const bool written = std::fwrite(bytes.data(), 1, bytes.size(), file.get()) == bytes.size();
  const int error = errno;
  const bool closed = std::fclose(file.release()) == 0;
  if (!written || !closed) {
    throw FileError(path, "書き込めません: " + system_reason(written ? errno : error));
  }
}

void replace_file(const fs::path& path, std::string_view bytes, const KeepRule& rule) {
  const fs::path real = real_file(path);
  std::error_code error;
  if (const auto there = fs::status(path, error); fs::exists(there) && fs::is_other(there)) {
    OutputFile device(path);
    device.buffer().assign(bytes);
    device.close();
    return;
  }
  TemporaryFile beside({real.parent_path()}, path_text(real.filename()));
  OutputFile file(beside.path());
  beside.take_mode_of(real);
  file.buffer().assign(bytes);
  file.flush();
  file.reach_disk();
  file.close();
  if (!is_kept(real, rule)) {
    beside.replace(real);
    return;
  }
  const fs::path backup = move_aside(real, rule);
  try {
    beside.replace(real);
  } catch (const FileError&) {
    fs::rename(backup, real, error);
    throw;
  }
  if (rule.told) rule.told(real, backup);
}

void replace_text_file(const fs::path& path, std::string_view utf8, const KeepRule& rule) {
  std::string text(utf8);
  replace_all(text, "\n", "\r\n");
  replace_file(path, to_cp932(text), rule);
}

}  // namespace tobarine
