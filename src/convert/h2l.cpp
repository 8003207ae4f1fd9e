#include "convert/h2l.h"

#include "hamlog/adif_writer.h"
#include "hamlog/hamlog_csv.h"
#include "text/error.h"
#include "text/output_file.h"

namespace tobarine {
namespace {

void convert_all(HamlogReader& reader, H2lRules& rules, AdifWriter& writer,
                 const RunContext& context, ConversionReport& report) {
  AdifContact contact;
  while (reader.next(contact.record, report.findings)) {
    ++report.read;
    context.tell(report.read, reader.file().bytes_read(), reader.file().size());
    if (!rules.apply(contact, reader.line(), report.findings)) continue;
    if (const std::size_t lacking = writer.write(contact); lacking > 0) {
      report.findings.add(FindingKind::kNotEncodable, reader.line(), contact.record.call,
                          std::to_string(lacking) + " 文字");
    }
    ++report.written;
  }
}

ConversionReport run(const H2lJob& job, HamlogReader& reader, AdifTarget target,
                     const ConversionTables& tables, const CallTables& calls,
                     const RunContext& context) {
  refuse_same_file(job.input, job.output);
  H2lRules rules(job.options, {tables.bands, tables.modes, calls.calls, calls.codes}, target);
  OutputFile output(job.output);
  AdifWriter writer(output, target, job.options.write_qth);
  ConversionReport report;
  writer.write_header();
  try {
    convert_all(reader, rules, writer, context, report);
  } catch (const RecordError& error) {
    report.stopped_by = error.what();
  }
  output.close();
  return report;
}

}  // namespace

ConversionReport run_h2l(const H2lJob& job, const ConversionTables& tables, const CallTables& calls,
                         const RunContext& context) {
  refuse_old_layout(job.input);
  HamlogLineReader reader(job.input);
  return run(job, reader, AdifTarget::kLogger32, tables, calls, context);
}

ConversionReport run_eqsl(const H2lJob& job, const ConversionTables& tables,
                          const CallTables& calls, const RunContext& context) {
  refuse_old_layout(job.input);
  HamlogRowReader reader(job.input);
  return run(job, reader, AdifTarget::kEqsl, tables, calls, context);
}

}  // namespace tobarine
