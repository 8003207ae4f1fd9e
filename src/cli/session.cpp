#include "cli/session.h"

#include <algorithm>
#include <system_error>

#include "app/local_time.h"
#include "app/option_table.h"
#include "cli/print.h"
#include "cli/surroundings.h"
#include "convert/run.h"
#include "text/error.h"
#include "text/file_identity.h"
#include "text/folder.h"
#include "text/strings.h"

namespace tobarine {

namespace fs = std::filesystem;

namespace {

std::vector<fs::path> files_of(const fs::path& folder) {
  std::error_code error;
  std::vector<fs::path> files;
  for (const auto& entry : fs::directory_iterator(folder, error)) files.push_back(entry.path());
  return files;
}

}  // namespace

Session::Session(const CliOptions& options)
    : options_(options),
      folder_(
          locate_program_folder(folder_hints(options.home, executable_file(options.called_as)))),
      input_(options.input, temporary_folders(folder_.path)) {
  remove_leftovers(folder_.path);
  for_each_piece(refresh_user_copy(folder_, !options.quiet), '\n', [&](std::string_view line) {
    if (!line.empty()) print_note(options, line);
  });
  std::error_code error;
  const fs::path file = file_in(folder_.path, kSettingsFile);
  settings_ = fs::exists(file, error) ? read_settings(file) : first_start_settings();
  for (const std::string& assignment : options.set) {
    const std::size_t equals = assignment.find('=');
    if (equals == std::string::npos) {
      throw UsageError("--set は「名前=値」の形で書いて下さい: " + assignment);
    }
    set_setting(settings_, assignment.substr(0, equals), assignment.substr(equals + 1));
  }
  if (has_set("zlog_in_jst")) settings_.zlog_zone_chosen = "1";
  if (!options.trace.empty()) {
    refuse_shared_files({input()}, {options.trace});
    refuse_shared_files({}, {options.output, options.keep_intermediate, options.trace});
    const bool renewed = begins_with(options.trace, kTraceHeading);
    if (!renewed) refuse_shared_files(files_of(folder_.path), {options.trace});
    KeepRule rule = keep_rule();
    rule.may_go = [](const fs::path& file) { return begins_with(file, kTraceHeading); };
    trace_.open(options.trace, rule);
    trace_.line("strPath : " + folder_text(folder_.path));
  }
}

void Session::will_write(const std::vector<fs::path>& outputs) const {
  std::vector<fs::path> all = outputs;
  all.push_back(options_.trace);
  refuse_shared_files({input()}, all);
}

KeepRule Session::keep_rule() const {
  return {{}, local_time, [this](const fs::path& file, const fs::path& backup) {
            print_note(options_, std::string(finding_heading(FindingKind::kFileKept)) + ": " +
                                     kept_file_text(file, backup));
          }};
}

bool Session::has_set(std::string_view name) const {
  return std::ranges::any_of(options_.set, [name](std::string_view assignment) {
    return find_option(assignment.substr(0, assignment.find('='))) == find_option(name);
  });
}

ConversionTables Session::conversion_tables() {
  ConversionTables tables;
  tables.load(folder());
  trace("     Open strPath & Band_tbl.ini For Input As #f_i");
  trace("     Open strPath & Mode_tbl.ini For Input As #f_i");
  return tables;
}

}  // namespace tobarine
