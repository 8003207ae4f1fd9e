#include <iostream>
#include <system_error>

#include "cli/commands.h"
#include "cli/print.h"
#include "hamlog/hamlog_csv.h"
#include "reference/code_learner.h"
#include "reference/dxcc_builder.h"
#include "reference/jarl_lists.h"
#include "reference/jcc_builder.h"
#include "text/error.h"
#include "text/folder.h"
#include "text/output_file.h"
#include "text/strings.h"

namespace tobarine {
namespace {

namespace fs = std::filesystem;

// Calls `visit` with each item of the command line, or of standard input, one a line.
template <typename Visit>
void for_each_item(const CliOptions& options, Visit visit) {
  for (const std::string& item : options.items) visit(item);
  if (!options.items.empty()) return;
  std::string line;
  while (std::getline(std::cin, line)) {
    if (line.ends_with('\r')) line.pop_back();
    if (!is_blank(line)) visit(line);
  }
}

}  // namespace

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
  refuse_old_layout(options.input);
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

namespace {

JarlServer jarl_server(const CliOptions& options) {
  JarlServer server;
  server.url = options.url;
  server.limits.seconds = options.timeout;
  return server;
}

}  // namespace

int check_jarl(Session& session) {
  const std::array<std::string, 3> dates = jarl_dates(jarl_server(session.options()));
  const Settings& s = session.settings();
  // The wards have no date of their own in the settings; they are fetched with the guns.
  const std::array<std::string, 3> ours = {s.JCC_date, s.JCG_date, s.JCG_date};
  print_jarl_dates(session.options(), dates, ours);
  return 0;
}

int download_jarl(Session& session) {
  const JarlLists fetched = fetch_jarl_lists(jarl_server(session.options()));
  const fs::path folder = session.writable_folder();
  for (std::size_t i = 0; i < fetched.lists.size(); ++i) {
    replace_file(file_in(folder, kListFiles[i]), fetched.lists[i]);
  }
  const fs::path file = file_in(folder, kSettingsFile);
  std::error_code error;
  Settings settings = fs::exists(file, error) ? read_settings(file) : first_start_settings();
  settings.JCC_date = fetched.dates[0];
  settings.JCG_date = fetched.dates[1];
  write_settings(settings, file);
  print_jarl_download(session.options(), fetched, path_text(folder));
  return 0;
}

}  // namespace tobarine
