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

// The next line of standard input; a long one is refused before it fills the memory.
bool next_line(std::size_t number, std::string& line) {
  constexpr std::size_t kLongest = 100'000;
  line.clear();
  std::streambuf& bytes = *std::cin.rdbuf();
  using Traits = std::streambuf::traits_type;
  for (auto next = bytes.sbumpc();; next = bytes.sbumpc()) {
    if (Traits::eq_int_type(next, Traits::eof())) return !line.empty();
    if (Traits::to_char_type(next) == '\n') return true;
    if (line.size() == kLongest) throw RecordError("標準入力", number, "行が長すぎます");
    line += Traits::to_char_type(next);
  }
}

// Calls `visit` with each item of the command line, or of standard input, one a line.
template <typename Visit>
void for_each_item(const CliOptions& options, Visit visit) {
  for (const std::string& item : options.items) visit(item);
  if (!options.items.empty()) return;
  std::string line;
  for (std::size_t number = 1; next_line(number, line); ++number) {
    if (line.ends_with('\r')) line.pop_back();
    if (!is_blank(line)) visit(line);
  }
}

OnLoss on_loss(const CliOptions& options) {
  return options.force ? OnLoss::kReplace : OnLoss::kRefuse;
}

void refuse_loss(const std::string& refusal, const fs::path& output) {
  if (refusal.empty()) return;
  throw FileError(output, refusal + "。書き換えていません。これでよければ --force を付けて下さい");
}

}  // namespace

int show_settings(Session& session) {
  print_settings(session.options(), session.settings());
  return 0;
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
  const fs::path output = options.output.empty() ? file_in(session.writable_folder(), "dxcc_hl.dat")
                                                 : fs::path(options.output);
  session.will_write({output});
  const DxccRenewal renewal = renew_dxcc_file(session.input(), session.folder(), output,
                                              on_loss(options), session.keep_rule());
  refuse_loss(renewal.refusal, output);
  print_dxcc_file(options, renewal.built, path_text(output));
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
  const JccRenewal renewal = renew_jcc_master(lists, output, on_loss(options), session.keep_rule());
  refuse_loss(renewal.refusal, output);
  print_jcc_build(options, renewal, path_text(output));
  return 0;
}

int build_codes(Session& session) {
  const CliOptions& options = session.options();
  CallAnalysis calls;
  calls.load(session.folder());
  print_learned(options, learn_codes(session.input(), calls, session.writable_folder()));
  return 0;
}

namespace {

JarlServer jarl_server(const CliOptions& options) {
  JarlServer server;
  server.url = options.url;
  server.limits.seconds = options.timeout;
  return server;
}

void tell_of_plain_http(bool plain_http) {
  if (plain_http) std::cerr << "tobarine-cli: " << kPlainHttpNote << '\n';
}

JarlLists fetch_lists(const JarlServer& server) {
  try {
    return fetch_jarl_lists(server);
  } catch (const IncompleteLists& error) {
    throw Error(std::string(error.what()) +
                "。リストの件数の誤植と思われるときは、三つのリストをブラウザーで一つのフォルダーに"
                "保存して、tobarine-cli build jcc --from フォルダー --force で作れます");
  }
}

}  // namespace

int check_jarl(Session& session) {
  const JarlDates dates = jarl_dates(jarl_server(session.options()));
  tell_of_plain_http(dates.plain_http);
  print_jarl_dates(session.options(), dates, dates_of_our_lists(session.settings()));
  return 0;
}

int download_jarl(Session& session) {
  const JarlLists fetched = fetch_lists(jarl_server(session.options()));
  tell_of_plain_http(fetched.plain_http);
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
