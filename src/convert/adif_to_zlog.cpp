#include "convert/adif_to_zlog.h"

#include <algorithm>
#include <optional>
#include <string>
#include <utility>

#include "convert/adif_contacts.h"
#include "hamlog/hamlog_csv_writer.h"
#include "text/error.h"
#include "text/file_identity.h"
#include "text/output_file.h"
#include "text/strings.h"
#include "zlog/all_writer.h"
#include "zlog/zlo_writer.h"

namespace tobarine {
namespace {

// The reader lets a record inherit these from the one before; here each stands for itself.
void forget_last_contact(QsoRecord& r) {
  for (std::string QsoRecord::*field :
       {&QsoRecord::call, &QsoRecord::date, &QsoRecord::qso_date, &QsoRecord::time,
        &QsoRecord::time_on, &QsoRecord::his_rst, &QsoRecord::my_rst, &QsoRecord::comment,
        &QsoRecord::qsl_sent}) {
    (r.*field).clear();
  }
}

// The texts that the options send to the remarks; one that is there already is not repeated.
void add_remarks(const AdifToZlogOptions& options, QsoRecord& r) {
  const auto add = [&r](bool wanted, int place, std::string_view text) {
    std::string& rmks = place == 2 ? r.rmks2 : r.rmks1;
    if (!wanted || text.empty() || contains(rmks, text)) return;
    rmks.append(rmks.empty() ? "" : " ").append(text);
  };
  add(options.zlog.write_tx_number, options.tx_remarks, "TX#" + std::to_string(tx_number(r)));
  add(options.zlog.write_comment, options.comment_remarks, trim(r.comment));
  add(options.zlog.write_age, options.age_remarks, age_text(r));
  add(options.zlog.write_iota, options.iota_remarks, trim(r.iota));
}

// zLog's two logs.
class ZlogFiles {
 public:
  ZlogFiles(const AdifToZlogJob& job, const KeepRule& rule, zlo::Record& record)
      : all_file_(job.output(".all"), rule),
        zlo_file_(job.output(".zlo"), rule),
        zone_(job.options.zlog.zlo_to_jst ? 'J' : 'U'),
        all_(all_file_),
        zlo_(zlo_file_, record) {}

  void write_header(const QsoRecord& first_contact) {
    const bool station = !is_blank(first_contact.station_call);
    zlo_.write_header(trim(station ? first_contact.station_call : first_contact.operator_call),
                      trim(first_contact.contest_id), zone_);
  }

  // Returns the number of characters that CP932 lacks.
  std::size_t write(const ZlogEntry& entry) {
    return std::max(all_.write(entry), zlo_.write(entry));
  }

  void close(ConversionReport& report) {
    do_part(report, [this] { all_file_.close(); });
    do_part(report, [this] { zlo_file_.close(); });
  }

  // Those that are in both.
  std::size_t contacts() const {
    const std::size_t records = std::min(all_file_.records(), zlo_file_.records());
    return std::max<std::size_t>(records, 1) - 1;  // the header is one, too
  }

 private:
  OutputFile all_file_;
  OutputFile zlo_file_;
  char zone_;  // of the binary log
  AllWriter all_;
  ZloWriter zlo_;
};

// One conversion, contact by contact.
class Run {
 public:
  Run(const AdifToZlogJob& job, const ConversionTables& tables, const CallTables& calls,
      const PlaceTables& places, AdifToZlogState& state, const RunContext& context)
      : job_(job),
        context_(context),
        watch_(job.input),
        zlog_rules_(job.options.zlog),
        csv_rules_({calls.calls, places.codes, places.jcc}, job.options.csv_time,
                   job.options.write_qth, state.csv),
        tables_(tables),
        state_(state) {}

  ConversionReport all() {
    prepare(report_, [&] {
      const AdifToZlogOptions& options = job_.options;
      contacts_.emplace(AdifInput{job_.input,
                                  options.remarks,
                                  {options.zlog.write_comment, options.write_qth, true},
                                  job_.reading},
                        tables_, context_, report_.findings);
      report_.read = contacts_->count();
      const KeepRule rule = keep_rule(context_, report_.findings);
      zlog_files_.emplace(job_, rule, state_.record);
      csv_file_.emplace(job_.output(".csv"), rule);
    });
    if (!csv_file_) return std::move(report_);
    do_part(report_, [&] {
      every_contact();
      watch_.check();
    });
    zlog_files_->close(report_);
    do_part(report_, [&] { csv_file_->close(); });
    report_.written = zlog_files_->contacts();
    if (const std::size_t cut = zlog_rules_.cut_freqs(); cut > 0) {
      report_.findings.add(FindingKind::kZlogFreqCut, 0, "", std::to_string(cut) + " 件の交信");
    }
    tell_zones();
    return std::move(report_);
  }

 private:
  void every_contact() {
    forget_last_contact(record_);
    bool more = contacts_->next(record_, report_.findings);
    zlog_files_->write_header(record_);
    while (more) {
      one();
      forget_last_contact(record_);
      more = contacts_->next(record_, report_.findings);
    }
  }

  void one() {
    if (is_blank(record_.call) || is_blank(record_.qso_date)) {
      report_.findings.add(FindingKind::kNoDateOrCall, contacts_->line(), record_.call,
                           record_.qso_date + " " + record_.time_on);
      return;
    }
    std::size_t lacking = 0;
    switch (zlog_rules_.apply(record_, contacts_->line(), entry_, report_.findings)) {
      case ZlogRules::Fate::kWrite:
        lacking = zlog_files_->write(entry_);
        break;
      case ZlogRules::Fate::kLeftOut:
        break;
      case ZlogRules::Fate::kRefused:
        throw RecordError(job_.input, contacts_->line(),
                          zlog_rules_.refusal() + "。ここで変換を中止しました");
    }
    write_csv(lacking);
  }

  void write_csv(std::size_t lacking_elsewhere) {
    add_remarks(job_.options, record_);
    if (job_.options.whole_mhz)
      record_.freq.resize(std::min(record_.freq.find('.'), record_.freq.size()));
    HamlogColumns columns;
    csv_rules_.apply(record_, contacts_->line(), columns, report_.findings);
    WrittenLine written = write_hamlog_line(columns, csv_file_->buffer());
    csv_file_->end_record();
    written.lacking = std::max(written.lacking, lacking_elsewhere);
    report_written_line(written, contacts_->line(), record_.call, report_.findings);
  }

  void tell_zones() {
    const auto tell = [this](std::string_view file, bool jst) {
      report_.findings.add(FindingKind::kZoneWritten, 0, "",
                           std::string(file) + (jst ? " は JST" : " は UTC (ADIF のまま)"));
    };
    const TimeMode csv = job_.options.csv_time;
    tell(".all", job_.options.zlog.all_to_jst);
    tell(".zlo", job_.options.zlog.zlo_to_jst);
    tell(".csv", csv == TimeMode::kAllJst || csv == TimeMode::kAllJstFromAdif);
  }

  const AdifToZlogJob& job_;
  const RunContext& context_;
  InputWatch watch_;
  ConversionReport report_;
  std::optional<AdifContacts> contacts_;
  ZlogRules zlog_rules_;
  L2hRules csv_rules_;
  const ConversionTables& tables_;
  AdifToZlogState& state_;
  std::optional<ZlogFiles> zlog_files_;
  std::optional<OutputFile> csv_file_;
  QsoRecord record_;
  ZlogEntry entry_;
};

}  // namespace

std::filesystem::path AdifToZlogJob::output(std::string_view extension) const {
  std::filesystem::path path = base;
  path += extension;
  return path;
}

std::vector<std::filesystem::path> AdifToZlogJob::outputs() const {
  std::vector<std::filesystem::path> all;
  for (const std::string_view ending : kEndings) all.push_back(output(ending));
  return all;
}

ConversionReport run_adif_to_zlog(const AdifToZlogJob& job, const ConversionTables& tables,
                                  const CallTables& calls, const PlaceTables& places,
                                  AdifToZlogState& state, const RunContext& context) {
  refuse_shared_files({job.input}, job.outputs());
  return Run(job, tables, calls, places, state, context).all();
}

}  // namespace tobarine
