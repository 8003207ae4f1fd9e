#include "editors/file_editor.h"

#include <algorithm>
#include <system_error>
#include <utility>

#include "text/cp932.h"
#include "text/error.h"
#include "text/input_file.h"
#include "text/output_file.h"

namespace tobarine {

FileEditor::FileEditor(std::filesystem::path file) : file_(std::move(file)) {
  const std::string bytes = read_whole_file(file_);
  if (bytes.empty()) throw FileError(file_, "空なので編集するものがありません");
  const std::string utf8 = from_cp932(bytes);
  text_.reserve(utf8.size());
  for (std::size_t i = 0; i < utf8.size(); ++i) {
    const bool crlf = utf8[i] == '\r' && i + 1 < utf8.size() && utf8[i + 1] == '\n';
    if (crlf) ++i;
    if (utf8[i] == '\n') crlf_.push_back(crlf);
    text_ += utf8[i];
  }
}

std::string FileEditor::caption() const {
  return path_text(file_) + " ";
}

// Lines before and behind the edited part keep their own line ends; new ones get CR LF.
std::string FileEditor::with_line_ends(std::string_view text) const {
  const auto lines = [](std::string_view part) {
    return static_cast<std::size_t>(std::ranges::count(part, '\n'));
  };
  const std::size_t shorter = std::min(text.size(), text_.size());
  const auto same_start = static_cast<std::size_t>(
      std::ranges::mismatch(text.substr(0, shorter), text_).in1 - text.begin());
  const std::size_t kept_before = lines(text.substr(0, same_start));
  std::size_t same_end = 0;
  while (same_end < shorter - same_start &&
         text[text.size() - 1 - same_end] == text_[text_.size() - 1 - same_end]) {
    ++same_end;
  }
  const std::size_t all = lines(text);
  const std::size_t kept_behind = lines(text.substr(text.size() - same_end));
  std::string result;
  result.reserve(text.size() + all);
  std::size_t line = 0;
  for (const char c : text) {
    if (c == '\n') {
      const bool before = line < kept_before;
      const bool behind = line >= all - kept_behind;
      const std::size_t old = before ? line : crlf_.size() - (all - line);
      if ((!before && !behind) || crlf_[old]) result += '\r';
      ++line;
    }
    result += c;
  }
  return result;
}

FileEditor::Saved FileEditor::save(std::string_view text) {
  std::string bytes;
  Saved saved{encode_cp932(with_line_ends(text), bytes)};
  overwrite_start_of_file(file_, bytes);
  std::error_code error;
  const std::uintmax_t size = std::filesystem::file_size(file_, error);
  if (!error && size > bytes.size()) saved.behind = size - bytes.size();
  return saved;
}

FileEditor::Saved FileEditor::save_as(const std::filesystem::path& file, std::string_view text) {
  std::string bytes;
  const Saved saved{encode_cp932(with_line_ends(text), bytes)};
  replace_file(file, bytes);
  file_ = file;
  return saved;
}

}  // namespace tobarine
