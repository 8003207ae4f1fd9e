#include "convert/run.h"

#include <string>
#include <system_error>

namespace tobarine {

std::filesystem::path output_path(const std::filesystem::path& input, std::string_view extension) {
  const std::filesystem::path absolute = std::filesystem::absolute(input).lexically_normal();
  const std::u8string text = absolute.u8string();
  const std::size_t dot = text.find(u8'.');
  std::u8string result = text.substr(0, dot) + u8".";
  result.append(extension.begin(), extension.end());
  return result;
}

void refuse_same_file(const std::filesystem::path& input, const std::filesystem::path& output) {
  std::error_code error;
  if (std::filesystem::equivalent(input, output, error)) {
    throw UsageError("出力が入力と同じファイルです: " + path_text(output));
  }
}

void RunContext::tell(std::size_t contacts, std::uint64_t bytes_done,
                      std::uint64_t bytes_all) const {
  constexpr std::size_t kContactsPerCall = 4096;
  if (!progress || contacts % kContactsPerCall != 0 || bytes_all == 0) return;
  if (!progress(static_cast<double>(bytes_done) / static_cast<double>(bytes_all))) {
    throw StopRequested();
  }
}

RunContext RunContext::part(double from, double to) const {
  if (!progress) return {};
  return {[whole = progress, from, to](double done) { return whole(from + done * (to - from)); }};
}

}  // namespace tobarine
