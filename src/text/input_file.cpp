#include "text/input_file.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <system_error>

#include "text/cp932.h"
#include "text/encoding_guess.h"
#include "text/error.h"

namespace tobarine {
namespace {

constexpr std::size_t kBuffer = std::size_t{1} << 18;
constexpr char kEndMark = '\x1A';

}  // namespace

InputFile::InputFile(const std::filesystem::path& path, std::uint64_t offset)
    : path_(path), offset_(offset) {
  std::error_code error;
  if (std::filesystem::is_directory(path, error)) throw FileError(path, system_reason(EISDIR));
  file_ = open_file(path, "rb");
  if (!file_) throw FileError(path, "開けません: " + system_reason(errno, path));
  static_cast<void>(std::setvbuf(file_.get(), nullptr, _IONBF, 0));
  if (offset > 0 && !seek_to(file_.get(), offset)) {
    throw FileError(path, "読めません: " + system_reason(errno));
  }
  begun_ = state_of(file_.get());
}

std::size_t InputFile::read(char* buffer, std::size_t room) {
  const std::size_t got = std::fread(buffer, 1, room, file_.get());
  if (got < room && std::ferror(file_.get()) != 0) {
    throw FileError(path_, "読めません: " + system_reason(errno));
  }
  bytes_read_ += got;
  if (got < room && offset_ + bytes_read_ < size()) {
    throw FileError(path_, "読んでいる間に短くなりました。もう一度試して下さい");
  }
  if (got < room && state_of(file_.get()) != begun_) throw FileError(path_, kChangedWhileRead);
  return got;
}

ByteReader::ByteReader(const std::filesystem::path& path, std::uint64_t offset)
    : file_(path, offset), buffer_(kBuffer) {}

bool ByteReader::fill() {
  if (at_end_) return false;
  if (begin_ > 0) {
    std::memmove(buffer_.data(), buffer_.data() + begin_, end_ - begin_);
    end_ -= begin_;
    begin_ = 0;
  }
  if (end_ >= kLongestLine) {
    const bool lone_cr = window().find('\r') != std::string_view::npos;
    throw RecordError(file_.path(), line_ + 1,
                      std::string("行が長すぎます (1 MB を超えています)。") +
                          (lone_cr ? "改行が CR だけなら、CR LF にして保存し直して下さい"
                                   : "ログのファイルではないようです"));
  }
  if (buffer_.size() < end_ + kBuffer) buffer_.resize(end_ + kBuffer);
  const std::size_t room = buffer_.size() - end_;
  const std::size_t got = file_.read(buffer_.data() + end_, room);
  end_ += got;
  if (got < room) {
    at_end_ = true;
    if (end_ > begin_ && buffer_[end_ - 1] == kEndMark) --end_;
  }
  return got > 0;
}

void ByteReader::skip_utf8_mark() {
  while (window().size() < kUtf8Mark.size() && fill()) {
  }
  if (window().starts_with(kUtf8Mark)) consume(kUtf8Mark.size());
}

bool LineReader::next(std::string_view& line) {
  bytes_.consume(pending_);
  pending_ = 0;
  std::size_t searched = 0;
  for (;;) {
    const std::string_view window = bytes_.window();
    std::size_t end = window.find('\n', searched);
    if (end == std::string_view::npos) {
      searched = window.size();
      if (bytes_.fill()) continue;
      if (bytes_.window().empty()) return false;
      line = bytes_.window();
      pending_ = line.size();
    } else {
      pending_ = end + 1;
      if (end > 0 && window[end - 1] == '\r') --end;
      line = window.substr(0, end);
    }
    bytes_.count_lines(1);
    return true;
  }
}

std::size_t count_lines(const std::filesystem::path& path) {
  LineReader lines(path);
  std::string_view line;
  while (lines.next(line)) {
  }
  return lines.line();
}

std::string read_whole_file(const std::filesystem::path& path, std::size_t largest) {
  InputFile file(path);
  std::string bytes;
  std::size_t got = 0;
  do {
    const std::size_t size = bytes.size();
    bytes.resize(size + kBuffer);
    got = file.read(bytes.data() + size, kBuffer);
    bytes.resize(size + got);
    if (bytes.size() > largest) {
      throw FileError(
          path, "大きすぎます (" + std::to_string(largest / 1'000'000) + " MB を超えています)");
    }
  } while (got == kBuffer);
  return bytes;
}

void for_each_text_line(std::string_view bytes,
                        const std::function<bool(const std::string& line)>& visit) {
  if (bytes.ends_with(kEndMark)) bytes.remove_suffix(1);
  while (!bytes.empty()) {
    const std::size_t end = std::min(bytes.find('\n'), bytes.size());
    std::string_view line = bytes.substr(0, end);
    if (end < bytes.size() && line.ends_with('\r')) line.remove_suffix(1);
    if (!visit(from_cp932(line))) return;
    bytes.remove_prefix(std::min(end + 1, bytes.size()));
  }
}

std::vector<std::string> text_lines(std::string_view bytes) {
  std::vector<std::string> lines;
  for_each_text_line(bytes, [&lines](const std::string& line) {
    lines.push_back(line);
    return true;
  });
  return lines;
}

std::vector<std::string> read_text_lines(const std::filesystem::path& path) {
  return text_lines(read_whole_file(path));
}

std::vector<std::string> read_table_lines(const std::filesystem::path& path) {
  std::vector<std::string> lines = read_text_lines(path);
  for (std::size_t i = 0; i < lines.size(); ++i) {
    if (lines[i].find('\r') != std::string::npos) {
      throw RecordError(path, i + 1, "行の途中に改行 (CR だけの) があります");
    }
  }
  return lines;
}

}  // namespace tobarine
