#include <algorithm>
#include <iterator>
#include <memory>
#include <optional>
#include <vector>

#include "app/local_time.h"
#include "app/log_kind.h"
#include "cli/commands.h"
#include "cli/print.h"
#include "cli/surroundings.h"
#include "convert/adif_to_zlog.h"
#include "convert/h2l.h"
#include "convert/l2h.h"
#include "hamlog/adif_reader.h"
#include "hamlog/hamlog_csv.h"
#include "hamlog/hdb_reader.h"
#include "text/error.h"
#include "text/input_file.h"
#include "text/readable_input.h"
#include "text/temporary_file.h"
#include "zlog/all_reader.h"
#include "zlog/contest.h"
#include "zlog/zlo_reader.h"

namespace tobarine {
namespace {

namespace fs = std::filesystem;

std::optional<LogKind> recognise(const Session& session) {
  const fs::path& name = session.options().input;
  if (const auto kind = recognise_log(name, {})) return kind;  // a binary log has no first line
  LineReader lines(session.input());
  std::string_view line;
  return recognise_log(name, lines.next(line) ? line : std::string_view());
}

// The kind of the input, which must be one that the conversion takes.
LogKind input_kind(const Session& session, LogKindInfo::Input wanted) {
  if (const auto kind = log_kind_from_name(session.options().kind)) return *kind;
  const auto kind = recognise(session);
  if (!kind && wanted == LogKindInfo::kL2h) return LogKind::kAdif;  // the run looks for itself
  if (!kind)
    throw FileError(session.input(), "ファイルの種類が分かりません (--kind で指定できます)");
  if (log_kind_info(*kind).input != wanted) {
    const std::string way_back =
        kind == LogKind::kAdif ? "。Hamlog の CSV にするなら l2h を使って下さい" : "";
    throw FileError(session.input(), "この変換の入力ではありません (" +
                                         std::string(log_kind_info(*kind).label) + ")" + way_back);
  }
  return *kind;
}

// The one output of a conversion: a file, or standard output by way of a scratch file.
class Output {
 public:
  Output(const Session& session, std::string_view extension) {
    const CliOptions& options = session.options();
    if (options.output == kStandard) {
      path_ = scratch_.emplace(temporary_folders(session.folder()), "output").path();
    } else if (!options.output.empty()) {
      path_ = options.output;
    } else if (session.input_was_copied()) {
      throw UsageError(
          "標準入力やパイプから読む時は、出力を -o で指定して下さい (-o - は標準出力です)");
    } else {
      path_ = output_path(options.input, extension);
    }
  }

  const fs::path& path() const { return path_; }

  void hand_over() const {
    if (scratch_) copy_to_standard_output(path_);
  }

 private:
  std::optional<ScratchFile> scratch_;
  fs::path path_;
};

// What the user says of the zone of a zLog log: of a .ZLO, which tells itself, with --set only.
std::optional<char> chosen_zone(const Session& session, LogKind kind) {
  if (kind == LogKind::kZlogZlo && !session.has_set("zlog_in_jst")) return std::nullopt;
  return zlog_zone(session.settings());
}

// Tells what the run has done; returns the exit status.
int finish(Session& session, LogKind kind, const std::vector<fs::path>& outputs,
           ConversionReport report) {
  const CliOptions& options = session.options();
  if (options.output.empty()) {
    const std::string note = output_path_note(options.input, outputs.front());
    if (!note.empty()) {
      report.findings.add(FindingKind::kOutputName, 0, "", note + "。-o で変えられます");
    }
  }
  session.trace("変換数: " + std::to_string(report.written));
  const bool piped = options.input == kStandard;
  RunNames names{
      log_kind_info(kind).name, piped ? "-" : path_text(fs::absolute(options.input)), {}};
  for (const fs::path& output : outputs) {
    names.outputs.push_back(options.output == kStandard ? "-" : path_text(fs::absolute(output)));
  }
  print_run(options, names, report);
  return report.stopped_by ? 1 : 0;
}

// Runs a conversion with a progress bar where there is a terminal.
template <typename Run>
ConversionReport with_progress(const CliOptions& options, Run run) {
  ProgressBar bar(!options.quiet && stderr_is_terminal());
  ConversionReport report = run(RunContext{[&bar](double done) {
                                             bar.show(done);
                                             return true;
                                           },
                                           local_time});
  bar.clear();
  return report;
}

// All tables of the way from ADIF.
struct FromAdifTables {
  explicit FromAdifTables(Session& session) : conversion(session.conversion_tables()) {
    calls.load(session.folder());
    places.load(session.folder());
  }
  ConversionTables conversion;
  CallTables calls;
  PlaceTables places;
};

}  // namespace

int convert_h2l(Session& session) {
  const CliOptions& options = session.options();
  const LogKind kind = input_kind(session, LogKindInfo::kH2l);
  const Output output(session, "adi");
  H2lJob job;
  job.input = session.input();
  job.output = output.path();
  job.options = h2l_options(session.settings());
  job.source = log_kind_info(kind).source;
  job.zlog_zone = chosen_zone(session, kind);
  job.intermediate = options.keep_intermediate;
  session.will_write({job.output, job.intermediate});
  std::unique_ptr<HamlogLibrary> library;
  if (kind == LogKind::kHamlogHdb) {
    library = bind_hamlog_library(session.folder(),
                                  path_from_text(session.settings().hamlog_folder), job.input);
    job.library = library.get();
  }
  const bool from_zlog = is_zlog(job.source);
  if (!from_zlog && !options.keep_intermediate.empty()) {
    throw UsageError("--keep-intermediate は zLog のログのためのものです");
  }
  std::optional<ScratchFile> temporary;
  if (from_zlog && job.intermediate.empty()) {
    job.intermediate = temporary.emplace(temporary_folders(session.folder()), "zlog_1").path();
  }
  const ConversionTables tables = session.conversion_tables();
  const bool eqsl = options.command == Command::kEqsl;
  CallTables calls;
  if (asks_for_calls(job.options, eqsl ? AdifTarget::kEqsl : AdifTarget::kLogger32)) {
    calls.load(session.folder());
  } else {
    calls.load_codes(session.folder());
  }
  const auto run = eqsl ? run_eqsl : run_h2l;
  const ConversionReport report = with_progress(
      options, [&](const RunContext& context) { return run(job, tables, calls, context); });
  if (kind == LogKind::kZlogAll && !job.zlog_zone) {
    print_note(options,
               ".ALL の時刻を UTC として読みました。JST のログなら --set Op_3=1 を付けて下さい");
  }
  output.hand_over();
  return finish(session, kind, {output.path()}, report);
}

namespace {

int option1_of(const std::string& time) {
  constexpr std::string_view kTimes[] = {"none", "jst", "utc", "ja"};
  return static_cast<int>(std::ranges::find(kTimes, time) - std::begin(kTimes));
}

AdifReading adif_reading(const CliOptions& options) {
  for (const AdifReadingName& name : adif_readings()) {
    if (name.word == options.reading) return name.reading;
  }
  return AdifReading::kAsk;
}

}  // namespace

int convert_l2h(Session& session) {
  const CliOptions& options = session.options();
  const LogKind kind = input_kind(session, LogKindInfo::kL2h);
  const Output output(session, "csv");
  const L2hJob job{session.input(), output.path(),
                   l2h_options(session.settings(), option1_of(options.time)),
                   temporary_folders(session.folder()), adif_reading(options)};
  session.will_write({job.output});
  const FromAdifTables tables(session);
  L2hState fresh_start;
  const ConversionReport report = with_progress(options, [&](const RunContext& context) {
    return run_l2h(job, tables.conversion, tables.calls, tables.places, fresh_start, context);
  });
  output.hand_over();
  return finish(session, kind, {output.path()}, report);
}

int convert_adif_to_zlog(Session& session) {
  const CliOptions& options = session.options();
  const LogKind kind = input_kind(session, LogKindInfo::kL2h);
  if (options.output == kStandard) {
    throw UsageError("adif2zlog の出力は三つのファイルなので、-o - は使えません");
  }
  fs::path base = Output(session, "").path();
  if (options.output.empty()) base.replace_extension();
  const AdifToZlogJob job{session.input(), base, adif_to_zlog_options(session.settings()),
                          adif_reading(options)};
  session.will_write(job.outputs());
  const FromAdifTables tables(session);
  AdifToZlogState fresh_start;
  const ConversionReport report = with_progress(options, [&](const RunContext& context) {
    return run_adif_to_zlog(job, tables.conversion, tables.calls, tables.places, fresh_start,
                            context);
  });
  return finish(session, kind, job.outputs(), report);
}

int show_info(Session& session) {
  const fs::path& input = session.input();
  const InputWatch watch(input);
  const auto kind = recognise(session);
  if (!kind)
    throw FileError(
        input,
        "ファイルの種類が分かりません (Hamlog の CSV、zLog の .all と .zlo、ADIF が読めます)");
  LogInfo info{log_kind_info(*kind).name, log_kind_info(*kind).label, {}, {}, {}, {}, {}};
  if (*kind == LogKind::kHamlogCsv) {
    info.layout = layout_name(look_at_hamlog_csv(input).layout);
    info.contacts = count_hamlog_lines(input);
  }
  if (*kind == LogKind::kAdif) {
    const AdifFileInfo adif = scan_adif(input);
    info.layout = adif.utf8 ? "UTF-8" : "Shift-JIS";
    info.contacts = adif.contacts;
    info.note = classic_harm(adif.layout);
  }
  if (*kind == LogKind::kHamlogHdb) {
    const auto library = bind_hamlog_library(
        session.folder(), path_from_text(session.settings().hamlog_folder), input);
    info.contacts = count_hamlog_hdb(input, *library);
  }
  if (*kind == LogKind::kZlogAll) {
    refuse_foreign_all(input);
    info.contacts = count_all_contacts(input);
    info.zone = all_zone(chosen_zone(session, *kind));
  }
  if (*kind == LogKind::kZlogZlo) {
    refuse_foreign_zlo(input);
    info.contest = read_contest(input);
    info.contacts = info.contest->contacts;
    info.zone = zlo_zone(*info.contest, chosen_zone(session, *kind));
  }
  watch.check();
  print_info(session.options(), info);
  return 0;
}

}  // namespace tobarine
