#include <iostream>
#include <system_error>

#include "app/reference_tools.h"
#include "cli/commands.h"
#include "cli/print.h"
#include "text/error.h"
#include "text/folder.h"
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
  const fs::path output = options.output.empty() ? file_in(session.writable_folder(), "dxcc_hl.dat")
                                                 : fs::path(options.output);
  session.will_write({output});
  const DxccFile built =
      renew_dxcc_file(options.input, session.folder(), output, session.keep_rule());
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
  const fs::path lists = options.input.empty() ? session.folder() : fs::path(options.input);
  const fs::path output = options.output.empty() ? file_in(session.writable_folder(), "JCC_JCG.mas")
                                                 : fs::path(options.output);
  session.will_write({output});
  const JccRenewal renewal = renew_jcc_master(lists, output, session.keep_rule());
  print_jcc_build(options, renewal, path_text(output));
  return 0;
}

int build_codes(Session& session) {
  const CliOptions& options = session.options();
  CallAnalysis calls;
  calls.load(session.folder());
  print_learned(options, learn_codes(options.input, calls, session.writable_folder()));
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
  print_jarl_dates(session.options(), jarl_dates(jarl_server(session.options())),
                   dates_of_our_lists(session.settings()));
  return 0;
}

int download_jarl(Session& session) {
  const JarlLists fetched = fetch_jarl_lists(jarl_server(session.options()));
  const fs::path folder = session.writable_folder();
  const fs::path file = file_in(folder, kSettingsFile);
  std::error_code error;
  Settings settings = fs::exists(file, error) ? read_settings(file) : first_start_settings();
  keep_jarl_lists(fetched, folder, settings);
  write_settings(settings, file);
  print_jarl_download(session.options(), fetched, path_text(folder));
  return 0;
}

}  // namespace tobarine
