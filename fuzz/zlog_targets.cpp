// The readers of zLog's logs as today's zLog has them. What they hand out and the writers take is
// read back as it was written, whatever the log was.
#include "targets.h"
#include "text/error.h"
#include "zlog/zcsv_reader.h"
#include "zlog/zcsv_writer.h"
#include "zlog/zlox_reader.h"
#include "zlog/zlox_writer.h"

namespace tobarine::fuzz {
namespace {

// Writes what the reader hands out in one form and returns the file's bytes.
template <typename Reader>
std::string written(Reader& reader, const ZlogHead& head, bool csv, FindingLog& findings) {
  const auto path = scratch_path("rewritten");
  ZlogQso qso;
  std::size_t number = 0;
  if (csv) {
    OutputFile file(path);
    ZcsvWriter writer(file, head.zone);
    while (reader.next(qso, findings)) writer.write(qso, ++number, findings);
    file.close();
  } else {
    ZloxWriter writer(path, ZloxWriter::Form::kZlox, head, findings);
    while (reader.next(qso, findings)) writer.write(qso, ++number, findings);
    writer.close();
  }
  return bytes_of(path);
}

template <typename Reader>
void rewrite(Reader&& first, const ZlogHead& head, bool csv) {
  FindingLog findings;
  const std::string once = written(first, head, csv, findings);
  const auto again = scratch_file("again", once);
  FindingLog found_again;
  std::string twice;
  if (csv) {
    ZcsvReader reader(again);
    twice = written(reader, head, csv, found_again);
  } else {
    ZloxReader reader(again);
    twice = written(reader, reader.head(), csv, found_again);
  }
  require(once == twice, "a log that was written is read as it was written");
  require(found_again.count(FindingKind::kZlogFieldCut) == 0, "nothing is cut twice");
}

void zlog_newer(std::string_view bytes) {
  const auto file = scratch_file("log.zlox", bytes);
  try {
    for (const bool csv : {false, true}) {
      ZloxReader reader(file);
      const ZlogHead head = reader.head();
      rewrite(reader, head, csv);
    }
  } catch (const Error&) {
  }
}

void zlog_csv(std::string_view bytes) {
  const auto file = scratch_file("log.csv", bytes);
  try {
    for (const bool csv : {false, true}) rewrite(ZcsvReader(file), {}, csv);
  } catch (const Error&) {
  }
}

constexpr Target kTargets[] = {
    {"zlog_newer", zlog_newer, {"samples/contest.zlox", "samples/contest.zlo"}},
    {"zlog_csv", zlog_csv, {"samples/contest_zlog.csv"}},
};

}  // namespace

std::span<const Target> zlog_targets() {
  return kTargets;
}

}  // namespace tobarine::fuzz
