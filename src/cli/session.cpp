#include "cli/session.h"

#include <system_error>

#include "cli/surroundings.h"
#include "text/error.h"
#include "text/folder.h"

namespace tobarine {

namespace fs = std::filesystem;

Session::Session(const CliOptions& options)
    : options_(options),
      folder_(locate_program_folder(folder_hints(options.home, options.called_as))) {
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
  if (!options.trace.empty()) {
    trace_.open(options.trace);
    trace_.line("Tobarine_log.txt");
    trace_.line("strPath : " + folder_text(folder_.path));
  }
}

ConversionTables Session::conversion_tables() {
  ConversionTables tables;
  tables.load(folder());
  trace("     Open strPath & Band_tbl.ini For Input As #f_i");
  trace("     Open strPath & Mode_tbl.ini For Input As #f_i");
  return tables;
}

}  // namespace tobarine
