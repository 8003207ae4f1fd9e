#include "convert/run.h"

#include <string>

#include "hamlog/adif_writer.h"

namespace tobarine {

std::filesystem::path output_path(const std::filesystem::path& input, std::string_view extension) {
  const std::filesystem::path absolute = std::filesystem::absolute(input).lexically_normal();
  const std::u8string text = absolute.u8string();
  const std::size_t dot = text.find(u8'.');
  std::u8string result = text.substr(0, dot) + u8".";
  result.append(extension.begin(), extension.end());
  return result;
}

std::string output_path_note(const std::filesystem::path& input,
                             const std::filesystem::path& output) {
  const std::filesystem::path whole = std::filesystem::absolute(input).lexically_normal();
  if (output.parent_path() != whole.parent_path()) {
    return "入力と別のフォルダーです: " + path_text(output) +
           " (フォルダーの名前にある「.」までが出力の名前になるため)";
  }
  if (output.stem() != whole.stem()) {
    return "入力の名前の途中までです: " + path_text(output.filename()) +
           " (最初の「.」までが出力の名前になるため)";
  }
  return {};
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
  if (!progress) return {{}, now};
  return {[whole = progress, from, to](double done) { return whole(from + done * (to - from)); },
          now};
}

void ReadingPace::at(const InputFile& file) {
  if (file.bytes_read() == told_ || !context_.progress) return;
  told_ = file.bytes_read();
  const double all = static_cast<double>(file.size());
  if (!context_.progress(all > 0 ? static_cast<double>(told_) / all : 0)) throw StopRequested();
}

std::string kept_file_text(const std::filesystem::path& file, const std::filesystem::path& backup) {
  return path_text(file.filename()) + " -> " + path_text(backup.filename());
}

KeepRule keep_rule(const RunContext& context, FindingLog& findings) {
  return {is_own_adif, context.now,
          [&findings](const std::filesystem::path& file, const std::filesystem::path& backup) {
            findings.add(FindingKind::kFileKept, 0, "", kept_file_text(file, backup));
          }};
}

void do_part(ConversionReport& report, const std::function<void()>& part) {
  try {
    part();
  } catch (const Error& error) {
    if (report.stopped_by) {
      report.stopped_by->append("。").append(error.what());
    } else {
      report.stopped_by = error.what();
    }
  }
}

void prepare(ConversionReport& report, const std::function<void()>& part) {
  try {
    part();
  } catch (const StopRequested&) {
    report.stopped_by = "中止しました。出力はまだ書いていません";
  } catch (const Error& error) {
    if (report.findings.count(FindingKind::kFileKept) == 0) throw;
    report.stopped_by = error.what();
  }
}

}  // namespace tobarine
