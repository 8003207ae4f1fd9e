#include "convert/l2h.h"

#include <optional>

#include "convert/adif_contacts.h"
#include "hamlog/hamlog_csv_writer.h"
#include "text/file_identity.h"
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
  report_written_line(written, line, call, findings);
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
void write_all(AdifContacts& contacts, L2hRules& rules, const std::filesystem::path& temporary,
               FindingLog& findings) {
  OutputFile output(temporary);
  QsoRecord record;
  HamlogColumns columns;
  while (contacts.next(record, findings)) {
    rules.apply(record, contacts.line(), columns, findings);
    const std::size_t before = output.buffer().size();
    const WrittenLine written = write_hamlog_line(columns, output.buffer());
    const std::string_view line = std::string_view(output.buffer()).substr(before);
    report_line(written, contains(line, kDropMark), columns, contacts.line(), findings);
    output.end_record();
  }
  output.close();
}

// Pass 2: the lines without "//" to the output.
void copy_lines(const std::filesystem::path& from, OutputFile& output) {
  LineReader lines(from);
  std::string_view line;
  while (lines.next(line)) {
    if (contains(line, kDropMark)) continue;
    output.buffer().append(line).append("\r\n");
    output.end_record();
  }
}

}  // namespace

ConversionReport run_l2h(const L2hJob& job, const ConversionTables& tables, const CallTables& calls,
                         const PlaceTables& places, L2hState& state, const RunContext& context) {
  refuse_shared_files({job.input}, {job.output});
  const InputWatch watch(job.input);
  ConversionReport report;
  const ScratchFile temporary(job.temporary_folders, "csv_temp");
  std::optional<OutputFile> output;
  prepare(report, [&] {
    AdifContacts contacts(
        {job.input, job.options.remarks, {.qth = job.options.write_qth}, job.reading}, tables,
        context, report.findings);
    report.read = contacts.count();
    L2hRules rules({calls.calls, places.codes, places.jcc}, job.options.time_mode,
                   job.options.write_qth, state);
    write_all(contacts, rules, temporary.path(), report.findings);
    watch.check();
    output.emplace(job.output, keep_rule(context, report.findings));
  });
  if (!output) return report;
  do_part(report, [&] { copy_lines(temporary.path(), *output); });
  do_part(report, [&] { output->close(); });
  report.written = output->records();
  return report;
}

}  // namespace tobarine
