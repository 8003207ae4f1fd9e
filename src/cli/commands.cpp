#include "cli/commands.h"

#include <algorithm>
#include <iostream>
#include <iterator>
#include <string_view>

#include "app/log_kind.h"
#include "app/program_folder.h"
#include "app/settings.h"
#include "app/trace_log.h"
#include "cli/print.h"
#include "cli/surroundings.h"
#include "convert/h2l.h"
#include "convert/l2h.h"
#include "hamlog/hamlog_csv.h"
#include "reference/code_learner.h"
#include "reference/dxcc_builder.h"
#include "reference/jcc_builder.h"
#include "text/cp932.h"
#include "text/error.h"
#include "text/folder.h"
#include "text/output_file.h"
#include "text/strings.h"

namespace tobarine {
namespace {

namespace fs = std::filesystem;

// What every command shares: the program folder, the settings of this run and the trace log.
class Session {
 public:
  explicit Session(const CliOptions& options)
      : options_(options),
        folder_(locate_program_folder(folder_hints(options.home, options.called_as))) {
    std::error_code error;
    const fs::path file = file_in(folder_.path, kSettingsFile);
    settings_ = fs::exists(file, error) ? read_settings(file) : first_start_settings();
    for (const std::string& assignment : options.set) {
      const std::size_t equals = assignment.find('=');
      const std::string key = assignment.substr(0, equals);
      if (equals == std::string::npos ||
          !set_setting(settings_, key, assignment.substr(equals + 1))) {
        throw UsageError("--set の設定がありません: " + assignment);
      }
    }
    if (!options.trace.empty()) {
      trace_.open(options.trace);
      trace_.line("Tobarine_log.txt");
      trace_.line("strPath : " + folder_text(folder_.path));
    }
  }

  const CliOptions& options() const { return options_; }
  const Settings& settings() const { return settings_; }
  const fs::path& folder() const { return folder_.path; }
  fs::path writable_folder() const { return make_user_copy(folder_); }
  void trace(std::string_view line) { trace_.line(line); }

  ConversionTables conversion_tables() {
    ConversionTables tables;
    tables.load(folder());
    trace("     Open strPath & Band_tbl.ini For Input As #f_i");
    trace("     Open strPath & Mode_tbl.ini For Input As #f_i");
    return tables;
  }

 private:
  const CliOptions& options_;
  ProgramFolder folder_;
  Settings settings_;
  TraceLog trace_;
};

std::optional<LogKind> recognise(const fs::path& input) {
  LineReader lines(input);
  std::string_view line;
  return recognise_log(input, lines.next(line) ? line : std::string_view());
}

// The kind of the input, which must be one that the conversion takes.
LogKind input_kind(const CliOptions& options, LogKindInfo::Input wanted) {
  if (!options.kind.empty()) {
    const auto kind = log_kind_from_name(options.kind);
    if (!kind || log_kind_info(*kind).input != wanted) {
      throw UsageError("--kind の値が使えません: " + options.kind);
    }
    return *kind;
  }
  const auto kind = recognise(options.input);
  if (!kind) throw FileError(options.input, "ファイルの種類が分かりません (--kind で指定できます)");
  if (log_kind_info(*kind).input != wanted) {
    throw FileError(options.input, "この変換の入力ではありません (" +
                                       std::string(log_kind_info(*kind).label) + ")");
  }
  return *kind;
}

int convert_h2l(Session& session) {
  const CliOptions& options = session.options();
  const LogKind kind = input_kind(options, LogKindInfo::kH2l);
  const fs::path output =
      options.output.empty() ? output_path(options.input, "adi") : fs::path(options.output);
  const H2lJob job{options.input, output, h2l_options(session.settings())};
  const ConversionTables tables = session.conversion_tables();
  CallTables calls;
  calls.load(session.folder());
  ProgressBar bar(!options.quiet && stderr_is_terminal());
  const RunContext context{[&bar](double done) { bar.show(done); }};
  const auto run = options.command == Command::kH2l ? run_h2l : run_eqsl;
  const ConversionReport report = run(job, tables, calls, context);
  bar.clear();
  session.trace("変換数: " + std::to_string(report.written));
  print_run(options,
            {log_kind_info(kind).name, path_text(fs::absolute(job.input)),
             path_text(fs::absolute(output))},
            report);
  return report.stopped_by ? 1 : 0;
}

int option1_of(const std::string& time) {
  constexpr std::string_view kTimes[] = {"none", "jst", "utc", "ja"};
  return static_cast<int>(std::ranges::find(kTimes, time) - std::begin(kTimes));
}

int convert_l2h(Session& session) {
  const CliOptions& options = session.options();
  const LogKind kind = input_kind(options, LogKindInfo::kL2h);
  const fs::path output =
      options.output.empty() ? output_path(options.input, "csv") : fs::path(options.output);
  const L2hJob job{options.input, output, l2h_options(session.settings(), option1_of(options.time)),
                   temporary_folders(session.folder())};
  const ConversionTables tables = session.conversion_tables();
  CallTables calls;
  calls.load(session.folder());
  PlaceTables places;
  places.load(session.folder());
  L2hState fresh_start;
  ProgressBar bar(!options.quiet && stderr_is_terminal());
  const RunContext context{[&bar](double done) { bar.show(done); }};
  const ConversionReport report = run_l2h(job, tables, calls, places, fresh_start, context);
  bar.clear();
  session.trace("変換数: " + std::to_string(report.written));
  print_run(options,
            {log_kind_info(kind).name, path_text(fs::absolute(job.input)),
             path_text(fs::absolute(output))},
            report);
  return 0;
}

int show_info(Session& session) {
  const fs::path input = session.options().input;
  const auto kind = recognise(input);
  if (!kind) throw FileError(input, "ファイルの種類が分かりません");
  LogInfo info{log_kind_info(*kind).name, log_kind_info(*kind).label, {}, {}};
  if (*kind == LogKind::kHamlogCsv) {
    const HamlogLayout layout = hamlog_layout(input);
    info.layout = layout == HamlogLayout::kOld ? "旧" : layout == HamlogLayout::kNew ? "新" : "空";
    info.contacts = count_lines(input);
  }
  if (*kind == LogKind::kAdif) {
    const AdifFileInfo adif = scan_adif(input);
    info.layout = adif.utf8 ? "UTF-8" : "Shift-JIS";
    info.contacts = adif.contacts;
  }
  print_info(session.options(), info);
  return 0;
}

// Calls `visit` with each item of the command line, or of standard input, one a line.
template <typename Visit>
void for_each_item(const CliOptions& options, Visit visit) {
  for (const std::string& item : options.items) visit(item);
  if (!options.items.empty()) return;
  std::string line;
  while (std::getline(std::cin, line)) {
    if (line.ends_with('\r')) line.pop_back();
    if (!trim(line).empty()) visit(line);
  }
}

int lookup_calls(Session& session) {
  CallAnalysis calls;
  calls.load(session.folder());
  for_each_item(session.options(), [&](const std::string& call) {
    print_call(session.options(), call, calls.find(call, session.options().date));
  });
  return 0;
}

int lookup_codes(Session& session) {
  HamlogToDxcc codes;
  codes.load(file_in(session.folder(), "h2l_cty.mas"));
  for_each_item(session.options(), [&](const std::string& code) {
    print_code(session.options(), code, codes.find(code));
  });
  return 0;
}

int build_dxcc(Session& session) {
  const CliOptions& options = session.options();
  EntityList entities;
  entities.load(file_in(session.folder(), "dxcc_mas.txt"));
  const DxccFile built = build_dxcc_file(options.input, entities);
  const fs::path output = options.output.empty() ? file_in(session.writable_folder(), "dxcc_hl.dat")
                                                 : fs::path(options.output);
  replace_text_file(output, built.text);
  print_dxcc_file(options, built, path_text(output));
  return 0;
}

int lookup_jcc(Session& session) {
  JccMaster master;
  master.load(file_in(session.folder(), "JCC_JCG.mas"));
  for_each_item(session.options(), [&](const std::string& number) {
    print_jcc(session.options(), number, master.find(number));
  });
  return 0;
}

int build_jcc_master(Session& session) {
  const CliOptions& options = session.options();
  const JccBuild built =
      build_jcc(options.input.empty() ? session.folder() : fs::path(options.input));
  const fs::path output = options.output.empty() ? file_in(session.writable_folder(), "JCC_JCG.mas")
                                                 : fs::path(options.output);
  JccMaster before;
  std::error_code error;
  if (fs::exists(output, error)) before.load(output);
  replace_text_file(output, JccMaster::file_text(built.places));
  print_jcc_build(options, built, compare_jcc(before.places(), built.places), path_text(output));
  return 0;
}

int build_codes(Session& session) {
  const CliOptions& options = session.options();
  if (hamlog_layout(options.input) == HamlogLayout::kOld) {
    throw FileError(options.input, "ﾌｧｲﾙ形式が [ 旧 ] なので不適切です。");
  }
  CallAnalysis calls;
  calls.load(session.folder());
  CodeLearner learner(calls);
  HamlogLineReader reader(options.input);
  QsoRecord record;
  FindingLog findings;
  while (reader.next(record, findings)) learner.add(record.call, record.code, record.qso_date);
  const fs::path folder = session.writable_folder();
  const fs::path h2l_file = file_in(folder, "h2l_cty.mas");
  const fs::path l2h_file = file_in(folder, "l2h_cty.mas");
  HamlogToDxcc h2l;
  DxccToHamlog l2h;
  h2l.load(h2l_file);
  l2h.load(l2h_file);
  const CodeLearner::Tables tables = learner.learn(h2l, l2h);
  replace_text_file(h2l_file, h2l_file_text(tables.h2l));
  replace_text_file(l2h_file, l2h_file_text(tables.l2h));
  print_learned(options, tables.verdicts, {path_text(h2l_file), path_text(l2h_file)});
  return 0;
}

}  // namespace

int run_command(const CliOptions& options) {
  Session session(options);
  switch (options.command) {
    case Command::kH2l:
    case Command::kEqsl:
      return convert_h2l(session);
    case Command::kL2h:
      return convert_l2h(session);
    case Command::kInfo:
      return show_info(session);
    case Command::kLookupCalls:
      return lookup_calls(session);
    case Command::kLookupCodes:
      return lookup_codes(session);
    case Command::kLookupJcc:
      return lookup_jcc(session);
    case Command::kBuildDxcc:
      return build_dxcc(session);
    case Command::kBuildJcc:
      return build_jcc_master(session);
    case Command::kBuildCodes:
      return build_codes(session);
  }
  return 2;
}

}  // namespace tobarine
