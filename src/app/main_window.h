// The main window's commands and state, without a window: every button, menu and option is a
// function here, and what the user then sees is in `controls`. One instance; everything runs in the
// window's thread.
#pragma once

#include <array>
#include <cstddef>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "app/controls.h"
#include "app/log_kind.h"
#include "app/settings.h"
#include "app/settings_file.h"
#include "app/shell.h"
#include "app/start_up.h"
#include "app/table_file.h"
#include "convert/adif_reading.h"
#include "convert/reference_tables.h"
#include "convert/report.h"
#include "convert/run.h"
#include "editors/grid_editor.h"
#include "hamlog/hamlog_library.h"
#include "reference/jarl_lists.h"
#include "rules/time_shift.h"
#include "zlog/all_reader.h"
#include "zlog/contest.h"

namespace tobarine {

class MainWindow {
 public:
  // `start` is what the start-up procedure has left; `folder` the program folder. The shell must
  // live as long.
  MainWindow(StartUp start, std::filesystem::path folder, Shell& shell);

  // Fills the window when it is created.
  void load();

  // What the name of a button, menu entry or toolbar key stands for; an unknown name does nothing.
  // Failures are shown to the user.
  void command(std::string_view name);

  // A file that was dropped on the window or chosen from the recent ones: opened as what it is.
  void open_file(const std::filesystem::path& file);

  // The user has changed an option.
  void check(std::size_t number, bool checked);  // Check1 to Check16
  void select_option1(std::size_t index);        // the time conversion
  void select_option2(std::size_t index);        // the remarks that hold the state
  void select_option3(std::size_t index);        // the zone of zLog's times
  void edit_was(std::string_view text);
  void edit_year(std::string_view text);
  void resize(int width, int height);  // twips; what is too large is set back

  // What the window may ask.
  const Settings& settings() const { return settings_; }
  const std::filesystem::path& folder() const { return folder_; }
  const std::filesystem::path& input() const { return input_; }
  const ConversionReport& report() const { return report_; }
  bool accepted() const { return accepted_; }  // input() is a log that can be converted
  bool running() const { return running_; }    // one run at a time, whichever window began it
  void set_running(bool running);

  // For the other windows: they share settings, tables and the run's state.
  Settings& shared_settings() { return settings_; }
  void save_settings();  // a failure is shown to the user
  const ConversionTables& conversion_tables() const { return tables_; }
  const CallTables& call_tables();    // loaded at the first call
  const PlaceTables& place_tables();  // loaded at the first call
  void set_edit_file(std::filesystem::path file) { edit_file_ = std::move(file); }

  // For a run whose progress goes to `bar`; the user may stop it.
  RunContext context_for(double& bar);
  bool stopped_by_user() const { return stop_wished_; }  // the last run

  JarlServer jarl_server;  // where the league's lists stand
  // How Hamlog's libraries are bound, when they are needed first.
  std::function<std::unique_ptr<HamlogLibrary>(const std::filesystem::path& database)> bind_library;
  MainControls controls;
  GridEditor bands;  // MSFlexGrid1, Text1
  GridEditor modes;  // MSFlexGrid2, Text4

 private:
  // Opening and viewing.
  void open_hdb();
  void open_csv();
  void open_adi();
  void open_zlog_all();
  void open_zlog_zlo();
  void open_as(LogKind kind, const std::filesystem::path& file);
  void open_hamlog_csv(const std::filesystem::path& file);
  void open_adif(const std::filesystem::path& file);
  void open_all(const std::filesystem::path& file);
  void open_zlo(const std::filesystem::path& file);
  void open_database(const std::filesystem::path& file);
  void bind_library_for(const std::filesystem::path& database);
  std::optional<std::filesystem::path> ask_for_hamlog_folder(const std::filesystem::path& database);
  void refuse_text_log(TextLogForm form);
  void set_files(const std::filesystem::path& input, LogKind kind, std::string_view extension);
  void show_zlog(std::string_view form, std::size_t contacts);
  bool ask_zone();
  void show_zone();
  std::optional<char> chosen_zone() const;
  void show_input_count(std::size_t count);
  void enable_by_kind();
  void enable_conversions(bool h2l, bool l2h);
  void enable_views();
  void view(const std::filesystem::path& file);
  void view_input();
  void view_output();
  void view_table_help();
  void view_report();
  void open_zlog_window();
  void edit_hamlog_csv();

  // Converting, and the tools.
  void convert(const std::function<ConversionReport(const RunContext&)>& run);
  void run_h2l_command();
  void run_eqsl_command();
  void run_to_adif(bool eqsl);
  void run_l2h_command();
  void choose_output_command();
  bool choose_output();  // false: the user does not
  bool settle_output();  // false: nothing is to be written
  KeepRule keep_rule();
  void show_result();
  void begin_waiting(std::string_view message);
  void end_waiting();
  void check_jarl();
  void look_for_new_lists(bool at_start);
  void download_jarl();
  bool replace_anyhow(const std::string& title, const std::string& refusal);
  void make_jcc_master();
  void make_dxcc_file();
  void learn_codes_from_log();

  // The rest.
  void show_settings();
  void colour_options();
  TimeMode show_time_mode();
  void set_year_from_system();
  void clear_was();
  void fill_grids();
  void tell_of_edit(bool changed, const std::string& left_out);
  void save_grids();
  void clear_counts();
  void show_edit_help();
  void exit();
  void trace(std::string_view line);
  void tell(Shell::Icon icon, std::string_view title, std::string_view text);

  struct Command {
    std::string_view name;
    void (MainWindow::*run)();
  };
  static const Command kCommands[];

  Shell& shell_;
  StartUp start_;
  std::filesystem::path folder_;
  Settings settings_;
  SettingsFile settings_file_;
  ConversionTables tables_;
  TableFile band_file_{"Band_tbl.ini", BandTable::kRows, BandTable::kSaved};
  TableFile mode_file_{"Mode_tbl.ini", ModeTable::kRows, ModeTable::kSaved};
  std::unique_ptr<CallTables> call_tables_;
  std::unique_ptr<PlaceTables> place_tables_;
  std::optional<LogKind> kind_;  // of the input; nothing: none is chosen
  std::filesystem::path input_;
  AdifReading adif_reading_ = AdifReading::kAsk;  // what the user has said for this input
  std::filesystem::path output_;
  std::string output_note_;                 // on its name, while it is the input's
  std::filesystem::path edit_file_;         // what the editor opens
  std::unique_ptr<HamlogLibrary> library_;  // bound for input_
  std::optional<ContestInfo> contest_;      // of a .ZLO
  std::optional<char> zlo_zone_;            // of a .ZLO, when the user has chosen it for this one
  L2hState l2h_state_;                      // what one run leaves to the next
  ConversionReport report_;                 // of the last run
  bool accepted_ = false;
  bool running_ = false;
  bool stop_wished_ = false;
};

}  // namespace tobarine
