#include "app/start_up.h"

#include <system_error>

#include "app/profile_file.h"
#include "app/program_folder.h"
#include "text/error.h"
#include "text/folder.h"
#include "text/utf8.h"

namespace tobarine {

StartUp start_up(const StartUpInput& input) {
  StartUp start;
  start.folder = folder_text(input.folder);
  start.windows_folder = input.windows_folder;
  const std::filesystem::path settings_file = file_in(input.folder, kSettingsFile);
  std::error_code error;
  const bool first_start = !std::filesystem::exists(settings_file, error);
  if (!first_start) start.settings = read_settings(settings_file);
  if (start.settings.write_trace_log.empty()) start.settings.write_trace_log = "1";
  if (start.settings.write_trace_log == "1") {
    try {
      start.trace.open(input.folder / trace_log_name(input.local_time));
    } catch (const FileError&) {  // another window that started in this second has it
    }
    start.trace_line("strPath : " + start.folder);
  }
  start.drive = left_chars(start.folder, 3);
  start.trace_line("win_dir : " + start.windows_folder);
  const std::vector<std::string> missing = missing_reference_files(input.folder);
  if (!missing.empty()) {
    start.missing_flag = "1";
    start.stop = {missing_files_title(), missing_files_text(input.folder, missing)};
    return start;
  }
  if (first_start) {
    start.settings = first_start_settings();
    write_settings(start.settings, settings_file);
    start.trace_line("ini_write_new:");
    const ProfileFile written(settings_file);
    for (const std::string& line : written.lines()) start.trace_line(line);
  }
  start.trace_line("Tobarine.Show");
  return start;
}

}  // namespace tobarine
