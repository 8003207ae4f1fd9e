#include "convert/h2l.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <utility>

#include "convert/intermediate_reader.h"
#include "hamlog/adif_writer.h"
#include "hamlog/hamlog_csv.h"
#include "hamlog/hdb_reader.h"
#include "text/file_identity.h"
#include "text/output_file.h"
#include "zlog/all_reader.h"
#include "zlog/contest.h"
#include "zlog/log_zone.h"
#include "zlog/zlo_reader.h"

namespace tobarine {
namespace {

std::unique_ptr<ContactReader> open_hamlog(const H2lJob& job, AdifTarget target,
                                           ConversionReport& report) {
  if (job.source == H2lSource::kHamlogHdb) {
    report.in_records = true;
    return std::make_unique<HdbReader>(job.input, *job.library);
  }
  const HamlogCsvInfo info = check_hamlog_csv(job.input);
  if (info.utf8) report.findings.add(FindingKind::kReadAsUtf8, 0, "", "");
  if (info.maybe_utf8) report.findings.add(FindingKind::kMaybeUtf8, 0, "", "");
  if (target == AdifTarget::kEqsl) return std::make_unique<HamlogRowReader>(job.input, info.utf8);
  return std::make_unique<HamlogLineReader>(job.input, info.utf8);
}

// Writes the intermediate file, the first half of the work, and counts the log's contacts.
std::unique_ptr<ContactReader> open_zlog(const H2lJob& job, const RunContext& context,
                                         ConversionReport& report) {
  std::unique_ptr<ZlogReader> log;
  LogZone zone = all_zone(job.zlog_zone);
  if (job.source == H2lSource::kZlogAll) {
    refuse_foreign_all(job.input);
    log = std::make_unique<AllReader>(job.input);
  } else {
    refuse_foreign_zlo(job.input);
    log = std::make_unique<ZloReader>(job.input);
    const ContestInfo contest = read_contest(job.input);
    zone = zlo_zone(contest, job.zlog_zone);
    report.in_records = true;
    report.read = contest.contacts;
  }
  IntermediateFile written = write_intermediate(*log, zone.letter, job.intermediate,
                                                context.part(0, 0.5), report.findings);
  if (!report.in_records) report.read = log->number() - 1;
  report.stopped_by = std::move(written.stopped_by);
  report.findings.add(zone.against_file ? FindingKind::kZoneAgainstFile : FindingKind::kZoneRead, 0,
                      "", zone_text(zone));
  return std::make_unique<IntermediateReader>(job.intermediate, std::move(written.numbers));
}

void convert_all(ContactReader& reader, H2lRules& rules, AdifWriter& writer,
                 const RunContext& context, std::size_t& read, ConversionReport& report) {
  AdifContact contact;
  while (reader.next(contact.record, report.findings)) {
    const ContactReader::Done done = reader.done();
    context.tell(++read, done.part, done.whole);
    if (!rules.apply(contact, reader.line(), report.findings)) continue;
    const AdifWriter::Written written = writer.write(contact);
    report_line_ends(written.line_ends, reader.line(), contact.record.call, report.findings);
    if (written.lacking > 0) {
      report.findings.add(FindingKind::kNotEncodable, reader.line(), contact.record.call,
                          std::to_string(written.lacking) + " 文字");
    }
  }
}

ConversionReport run(const H2lJob& job, AdifTarget target, const ConversionTables& tables,
                     const CallTables& calls, const RunContext& context) {
  refuse_shared_files({job.input}, {job.output, job.intermediate});
  const InputWatch watch(job.input);
  ConversionReport report;
  const bool from_zlog = is_zlog(job.source);
  std::unique_ptr<ContactReader> reader;
  std::optional<OutputFile> output;
  prepare(report, [&] {
    reader = from_zlog ? open_zlog(job, context, report) : open_hamlog(job, target, report);
    output.emplace(job.output, keep_rule(context, report.findings));
  });
  if (!output) return report;
  std::size_t read = 0;
  do_part(report, [&] {
    H2lRules rules(job.options, {tables.bands, tables.modes, calls.calls, calls.codes}, target);
    AdifWriter writer(*output, target, job.options.write_qth);
    writer.write_header();
    const RunContext rest = from_zlog ? context.part(0.5, 1) : context;
    convert_all(*reader, rules, writer, rest, read, report);
    watch.check();
  });
  if (!from_zlog) {
    report.read = read + report.findings.count(FindingKind::kInsideQuotes) +
                  report.findings.count(FindingKind::kBehindCr);
  }
  do_part(report, [&] { output->close(); });
  report.written = std::max<std::size_t>(output->records(), 1) - 1;  // the header is one, too
  return report;
}

}  // namespace

ConversionReport run_h2l(const H2lJob& job, const ConversionTables& tables, const CallTables& calls,
                         const RunContext& context) {
  return run(job, AdifTarget::kLogger32, tables, calls, context);
}

ConversionReport run_eqsl(const H2lJob& job, const ConversionTables& tables,
                          const CallTables& calls, const RunContext& context) {
  return run(job, AdifTarget::kEqsl, tables, calls, context);
}

}  // namespace tobarine
