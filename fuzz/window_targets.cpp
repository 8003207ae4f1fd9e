// What a user does rather than what a file holds: the window's commands in any order with texts of
// any length, tables that were edited by hand, and answers of the server of the lists.
#include <algorithm>
#include <array>
#include <optional>
#include <string>

#include "app/main_window.h"
#include "app/test_shell.h"
#include "convert/h2l.h"
#include "convert/l2h.h"
#include "paths.h"
#include "reference/jarl_lists.h"
#include "tables.h"
#include "targets.h"
#include "text/cp932.h"
#include "text/error.h"
#include "text/strings.h"
#include "text/utf8.h"

namespace tobarine::fuzz {
namespace {

namespace fs = std::filesystem;

// Takes the input apart: numbers and texts, empty when it is used up.
class Script {
 public:
  explicit Script(std::string_view bytes) : bytes_(bytes) {}
  bool more() const { return !bytes_.empty(); }
  unsigned number(unsigned below) {
    if (bytes_.empty()) return 0;
    const auto byte = static_cast<unsigned char>(bytes_.front());
    bytes_.remove_prefix(1);
    return byte % below;
  }
  // Up to the next line end; a "*" and a number in front repeat it to the length of a page.
  std::string text() {
    const std::string_view line = bytes_.substr(0, bytes_.find('\n'));
    bytes_.remove_prefix(std::min(line.size() + 1, bytes_.size()));
    if (!line.starts_with('*') || line.size() < 2) return from_cp932(line);
    std::string long_text;
    while (long_text.size() < 100'000) long_text += line.substr(1);
    return from_cp932(long_text);
  }

 private:
  std::string_view bytes_;
};

// A program folder of its own, filled once.
const fs::path& home() {
  static const fs::path folder = [] {
    fs::path path = scratch_path("home");
    fs::copy(delivered_folder(), path);
    return path;
  }();
  return folder;
}

constexpr auto kCommands = std::to_array<std::string_view>({"mnuOpen_csv",
                                                            "mnuOpen_adi",
                                                            "mnuOpen_zlog_all",
                                                            "mnuOpen_zlog_zlo",
                                                            "mnuDisp_in",
                                                            "mnuDisp_out",
                                                            "mnuDisp_report",
                                                            "mnuClear",
                                                            "mnuHelp",
                                                            "mnuEditHelp",
                                                            "adif2zlog_all",
                                                            "mnuLearn_codes",
                                                            "mnuHamlo_csv_Edit",
                                                            "cmdH2L",
                                                            "cmdeqsl",
                                                            "cmdL2H",
                                                            "cmdEnd",
                                                            "cmdOutput",
                                                            "Command1",
                                                            "no such command"});
constexpr std::array<std::string_view, 5> kSamples = {"hamlog.csv", "logger32.adi", "n1mm.adi",
                                                      "contest.all", "contest.zlo"};

void window_state(std::string_view bytes) {
  std::error_code ignored;
  for (const char* name : {"Tobarine.ini", "Band_tbl.ini", "Mode_tbl.ini"}) {
    fs::remove(home() / name, ignored);
    if (fs::exists(fs::path(delivered_folder()) / name)) {
      fs::copy(fs::path(delivered_folder()) / name, home() / name);
    }
  }
  const fs::path logs = scratch_path("logs");
  fs::remove_all(logs);
  fs::create_directory(logs);
  for (const std::string_view sample : kSamples) {
    fs::copy(fs::path(samples_folder()) / sample, logs / sample);
  }
  TestShell shell;
  shell.stop_after = 100'000;
  MainWindow window(start_up({home(), "", shell.now()}), home(), shell);
  window.load();
  Script script(bytes);
  for (int steps = 0; script.more() && steps < 60; ++steps) {
    switch (script.number(10)) {
      case 0:
        window.command(kCommands[script.number(kCommands.size())]);
        break;
      case 1:
        shell.files = {logs / kSamples[script.number(kSamples.size())]};
        window.command(kCommands[script.number(kCommands.size())]);
        break;
      case 2:
        window.open_file(logs / kSamples[script.number(kSamples.size())]);
        break;
      case 3: {
        const auto file = logs / ("log" + std::to_string(script.number(8)) + ".csv");
        window.open_file(scratch_file("logs/" + file.filename().string(), script.text()));
        break;
      }
      case 4: {
        const unsigned number = script.number(18);
        window.check(number, script.number(2) == 1);
        break;
      }
      case 5:
        window.select_option1(script.number(4));
        window.select_option2(script.number(3));
        window.select_option3(script.number(2));
        break;
      case 6:
        window.edit_was(script.text());
        break;
      case 7:
        window.edit_year(script.text());
        break;
      case 8:
        shell.answers.push_back(script.number(4));
        break;
      default:
        window.open_file(path_from_text(script.text().substr(0, 200)));
        break;
    }
    require(is_valid_utf8(window.controls.lblMsg.text), "what the window shows is text");
  }
  for (const std::string_view sample : kSamples) {
    bool kept = false;
    const std::string original = bytes_of(fs::path(samples_folder()) / sample);
    for (const auto& entry : fs::directory_iterator(logs)) {
      kept = kept || (entry.file_size() == original.size() && bytes_of(entry.path()) == original);
    }
    require(kept, "the user's log is there, be it under another name");
  }
}

// The bytes up to a line "--" as the band table, the rest as the mode table, used in both ways.
void edited_tables(std::string_view bytes) {
  const std::size_t cut = std::min(bytes.find("--\n"), bytes.size());
  const fs::path folder = scratch_path("tables");
  fs::create_directories(folder);
  scratch_file("tables/Band_tbl.ini", bytes.substr(0, cut));
  scratch_file("tables/Mode_tbl.ini", bytes.substr(std::min(cut + 3, bytes.size())));
  ConversionTables tables;
  try {
    tables.load(folder);
  } catch (const Error&) {
    return;
  }
  const auto& calls = delivered<CallTables>();
  const fs::path adif = scratch_path("tables/out.adi");
  const fs::path csv = scratch_path("tables/out.csv");
  std::error_code ignored;
  fs::remove(adif, ignored);
  fs::remove(csv, ignored);
  const ConversionReport to_adif =
      run_h2l({fs::path(samples_folder()) / "hamlog.csv", adif, {}}, tables, calls, RunContext());
  require(to_adif.read == 48 && to_adif.written == 48,
          "a table loses no contact on the way to ADIF");
  L2hState state;
  const ConversionReport to_csv =
      run_l2h({fs::path(samples_folder()) / "n1mm.adi", csv, {}, {folder}}, tables, calls,
              delivered<PlaceTables>(), state, RunContext());
  const std::string rows = bytes_of(csv);
  require(to_csv.written + to_csv.findings.count(FindingKind::kDroppedSlashes) == to_csv.read,
          "a table loses no contact on the way to Hamlog unsaid");
  require(static_cast<std::size_t>(std::ranges::count(rows, '\n')) == to_csv.written,
          "a contact is one line, whatever the table holds");
}

// Each line an answer of the server: its first letter says what kind.
void list_answers(std::string_view bytes) {
  Script script(bytes);
  const auto answer = [&script](const std::string& url, const HttpLimits&) -> HttpAnswer {
    switch (script.number(6)) {
      case 0:
        throw HttpError(HttpError::Kind::kRefused, url, "refused");
      case 1:
        throw HttpError(HttpError::Kind::kAnswered, url, "405");
      case 2:
        return {to_cp932(script.text()), script.text()};
      default:
        return {to_cp932(script.text() + "\n" + script.text() + "\n" + script.text()), ""};
    }
  };
  JarlServer server;
  server.get = answer;
  server.head = answer;
  if (script.number(2) == 1) server.url = "http://127.0.0.1/" + script.text();
  try {
    for (const std::string& date : jarl_dates(server).dates) {
      require(is_valid_utf8(date), "a date is text");
    }
  } catch (const Error& error) {
    require(is_valid_utf8(error.what()), "a message is text");
  }
  try {
    const JarlLists lists = fetch_jarl_lists(server);
    require(!lists.build.places.empty(), "lists that are taken hold places");
  } catch (const Error& error) {
    require(is_valid_utf8(error.what()), "a message is text");
  }
}

constexpr Target kTargets[] = {
    {"window_state", window_state},
    {"edited_tables", edited_tables, {"data/Band_tbl.ini", "data/Mode_tbl.ini"}},
    {"list_answers", list_answers},
};

}  // namespace

std::span<const Target> window_targets() {
  return kTargets;
}

}  // namespace tobarine::fuzz
