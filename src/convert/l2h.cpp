#include "convert/l2h.h"

#include "hamlog/adif_reader.h"
#include "hamlog/hamlog_csv_writer.h"
#include "text/error.h"
#include "text/input_file.h"
#include "text/output_file.h"
#include "text/strings.h"
#include "text/temporary_file.h"

namespace tobarine {
namespace {

constexpr std::string_view kDropMark = "//";
constexpr std::size_t kDateColumn = 1;

void report_line(const WrittenLine& written, bool dropped, const HamlogColumns& columns,
                 std::size_t line, FindingLog& findings) {
  const std::string_view call = columns[0];
  if (written.quotes_dropped > 0) {
    findings.add(FindingKind::kQuoteDropped, line, call,
                 std::to_string(written.quotes_dropped) + " 個");
  }
  if (written.lacking > 0) {
    findings.add(FindingKind::kNotEncodable, line, call, std::to_string(written.lacking) + " 文字");
  }
  if (!dropped) return;
  if (columns[kDateColumn] == kDropMark) {
    findings.add(FindingKind::kDroppedNoDate, line, call, "");
    return;
  }
  for (const std::string_view column : columns) {
    if (!contains(column, kDropMark)) continue;
    findings.add(FindingKind::kDroppedSlashes, line, call, column);
    return;
  }
  findings.add(FindingKind::kDroppedSlashes, line, call, "");
}

// Pass 1: every contact to the temporary file.
void write_all(const L2hJob& job, bool utf8, const ConversionTables& tables, L2hRules& rules,
               const std::filesystem::path& temporary, const RunContext& context,
               FindingLog& findings) {
  AdifRecordReader reader(job.input, utf8);
  AdifParser parser(tables.bands, tables.modes, job.options.remarks);
  OutputFile output(temporary);
  std::string text;
  QsoRecord record;
  HamlogColumns columns;
  std::size_t contacts = 0;
  while (reader.next(text)) {
    context.tell(++contacts, reader.file().bytes_read(), reader.file().size());
    parser.parse(text, reader.line(), record, findings);
    if (reader.cut()) findings.add(FindingKind::kRecordCut, reader.line(), record.call, "");
    if (reader.invalid_bytes() > 0) {
      findings.add(FindingKind::kInvalidByte, reader.line(), record.call,
                   std::to_string(reader.invalid_bytes()) + " バイト");
    }
    rules.apply(record, reader.line(), columns, findings);
    const std::size_t before = output.buffer().size();
    const WrittenLine written = write_hamlog_line(columns, output.buffer());
    const std::string_view line = std::string_view(output.buffer()).substr(before);
    report_line(written, contains(line, kDropMark), columns, reader.line(), findings);
    output.flush_if_full();
  }
  output.close();
}

// Pass 2: the lines without "//" to the output. Returns their number.
std::size_t copy_lines(const std::filesystem::path& from, const std::filesystem::path& to) {
  LineReader lines(from);
  OutputFile output(to);
  std::size_t copied = 0;
  std::string_view line;
  while (lines.next(line)) {
    if (contains(line, kDropMark)) continue;
    output.buffer().append(line).append("\r\n");
    output.flush_if_full();
    ++copied;
  }
  output.close();
  return copied;
}

}  // namespace

ConversionReport run_l2h(const L2hJob& job, const ConversionTables& tables, const CallTables& calls,
                         const PlaceTables& places, L2hState& state, const RunContext& context) {
  refuse_same_file(job.input, job.output);
  const AdifFileInfo info = scan_adif(job.input);
  if (!info.is_adif) {
    throw FileError(job.input, "ADIF ではないようです (CALL のタグがありません)");
  }
  ConversionReport report;
  report.read = info.contacts;
  if (info.utf8) report.findings.add(FindingKind::kReadAsUtf8, 0, "", "");
  if (info.maybe_utf8) report.findings.add(FindingKind::kMaybeUtf8, 0, "", "");
  L2hRules rules({calls.calls, places.codes, places.jcc}, job.options.time_mode,
                 job.options.write_qth, state);
  const TemporaryFile temporary(job.temporary_folders, "csv_temp");
  write_all(job, info.utf8, tables, rules, temporary.path(), context, report.findings);
  report.written = copy_lines(temporary.path(), job.output);
  return report;
}

}  // namespace tobarine
