#include "app/trace_log.h"

#include <array>

#include "text/cp932.h"
#include "text/error.h"
#include "text/printable.h"

namespace tobarine {

std::string trace_log_name(const std::tm& local_time) {
  std::array<char, 32> name{};
  static_cast<void>(std::strftime(name.data(), name.size(), "%Y%m%d_%H%M%S.txt", &local_time));
  return name.data();
}

void TraceLog::open(const std::filesystem::path& file, const KeepRule& rule) {
  file_ = std::make_unique<OutputFile>(file, rule);
  line(kTraceHeading);
}

void TraceLog::line(std::string_view text) {
  if (!file_) return;
  encode_cp932(printable(text), file_->buffer());
  file_->buffer() += "\r\n";
  try {
    file_->flush();  // a log that ends in mid-air is of no use after a crash
  } catch (const FileError&) {
    file_.reset();
  }
}

}  // namespace tobarine
