#include "app/main_window.h"

#include <algorithm>
#include <span>
#include <system_error>
#include <utility>

#include "app/option_table.h"
#include "rules/version.h"
#include "text/error.h"
#include "text/folder.h"
#include "text/strings.h"
#include "zlog/log_zone.h"

namespace tobarine {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kNeverFetched = "受信履歴無し";

// Of the buttons of a group the chosen one only is checked.
void select(std::span<Control> options, int index) {
  for (std::size_t i = 0; i < options.size(); ++i) {
    options[i].checked = static_cast<int>(i) == index;
  }
}

}  // namespace

const MainWindow::Command MainWindow::kCommands[] = {
    {"mnuOpen_hdb", &MainWindow::open_hdb},
    {"mnuOpen_csv", &MainWindow::open_csv},
    {"mnuOpen_adi", &MainWindow::open_adi},
    {"mnuOpen_zlog_all", &MainWindow::open_zlog_all},
    {"mnuOpen_zlog_zlo", &MainWindow::open_zlog_zlo},
    {"mnuDisp_in", &MainWindow::view_input},
    {"mnuDisp_out", &MainWindow::view_output},
    {"mnuDisp_report", &MainWindow::view_report},
    {"mnuClear", &MainWindow::clear_counts},
    {"mnuHelp", &MainWindow::view_table_help},
    {"mnuEditHelp", &MainWindow::show_edit_help},
    {"mnuJARL_Check", &MainWindow::check_jarl},
    {"mnuJARL_Download", &MainWindow::download_jarl},
    {"mnuMake_JCC_JCG", &MainWindow::make_jcc_master},
    {"adif2zlog_all", &MainWindow::open_zlog_window},
    {"mnuMake_dxcc_hl_dat", &MainWindow::make_dxcc_file},
    {"mnuLearn_codes", &MainWindow::learn_codes_from_log},
    {"mnuHamlo_csv_Edit", &MainWindow::edit_hamlog_csv},
    {"cmdH2L", &MainWindow::run_h2l_command},
    {"cmdeqsl", &MainWindow::run_eqsl_command},
    {"cmdL2H", &MainWindow::run_l2h_command},
    {"cmdEnd", &MainWindow::exit},
    {"cmdOutput", &MainWindow::choose_output_command},
    {"cmdReport", &MainWindow::view_report},
    {"Command1", &MainWindow::clear_was},
};

MainWindow::MainWindow(StartUp start, fs::path folder, Shell& shell)
    : bands({" No", " ADIF", "  CSV", " メモ書き", "配置先"}, BandTable::kCompared,
            BandTable::kSaved),
      modes({" No", " ADIF", "  CSV"}, ModeTable::kCompared, ModeTable::kSaved),
      shell_(shell),
      start_(std::move(start)),
      folder_(std::move(folder)),
      settings_file_(file_in(folder_, kSettingsFile)) {
  bind_library = [this](const fs::path& database) {
    return bind_hamlog_library(folder_, path_from_text(settings_.hamlog_folder), database);
  };
}

void MainWindow::command(std::string_view name) {
  const auto* const tool = std::ranges::find(kToolButtons, name, &ToolButton::key);
  if (tool != kToolButtons.end()) name = tool->command;
  const auto* const found = std::ranges::find(kCommands, name, &Command::name);
  if (found == std::end(kCommands) || running_) return;
  try {
    (this->*found->run)();
  } catch (const std::exception& error) {
    tell(Shell::Icon::kCritical, "Tobarine", error.what());
  }
  shell_.mirror();
}

void MainWindow::trace(std::string_view line) {
  if (settings_.write_trace_log == "1") start_.trace.line(line);
}

// The window shows how things stand before the message is read.
void MainWindow::tell(Shell::Icon icon, std::string_view title, std::string_view text) {
  shell_.mirror();
  shell_.show_message(icon, {std::string(title), std::string(text)});
}

void MainWindow::save_settings() {
  try {
    const std::vector<std::string_view> others = settings_file_.save(settings_);
    if (others.empty()) return;
    std::string text;
    for (const std::string_view option : others) {
      text.append(text.empty() ? "" : "、").append(option);
    }
    controls.lblSaving.text = "ほかの Tobarine で変えられた設定はそのまま残しました: " + text;
    controls.lblSaving.visible = true;
  } catch (const Error& error) {
    tell(Shell::Icon::kCritical, "Tobarine", error.what());
  }
}

void MainWindow::load() {
  settings_ = start_.settings;
  trace("     Form_Load()");
  settings_ = settings_file_.read();
  trace("     ini_read");
  controls.height = kMostHeight;
  controls.progress = 0;
  controls.title =
      " for ＴＨＷ５ :  Tobarine   ver " + std::string(kVersion) + "     coded by VELDOR";
  controls.lblInFile.text = "ﾒﾆｭｰより入力ﾌｧｲﾙを指定して下さい。";
  controls.lblInFile.colour = Colour::kLightRed;
  controls.mnuDisp.enabled = false;
  controls.mnuDisp_in.enabled = controls.tool("表示 i").enabled = false;
  enable_conversions(false, false);
  enable_views();
  show_settings();
  show_input_count(0);
  controls.lblInfo.text = "変換数: 0 件";
  tables_.load(folder_);
  trace("     Open strPath & Band_tbl.ini For Input As #f_i");
  trace("     Open strPath & Mode_tbl.ini For Input As #f_i");
  fill_grids();
  for (std::string* date : {&settings_.jcc_list_date, &settings_.jcg_list_date}) {
    if (date->empty()) *date = kNeverFetched;
  }
  if (settings_.check_lists_at_start == 1) {
    trace("     mnuJARL_Download_Click");
    trace("     Make_JCC_JCG_chk_1st");
    look_for_new_lists(true);
  }
  trace("         Form_Load()  OK");
  controls.Check[16].tip = "ＱＴＨ欄が空白で無ければ転記します";
  shell_.mirror();
}

void MainWindow::show_settings() {
  for_each_control(controls, [this](std::string_view name, Control& control) {
    show_option(settings_, Option::Window::kMain, name, control);
  });
  if (settings_.year_from_system == 1) set_year_from_system();
  show_time_mode();
  colour_options();
}

// What is chosen is light blue.
void MainWindow::colour_options() {
  const auto colour = [](auto& options) {
    for (Control& option : options) {
      option.colour = option.checked ? Colour::kLightBlue : Colour::kBlack;
    }
  };
  colour(controls.Check);
  colour(controls.Option1);
  colour(controls.Option2);
  colour(controls.Option3);
}

void MainWindow::check(std::size_t number, bool checked) {
  const Option* const option = find_option(Option::Window::kMain, "Check" + std::to_string(number));
  if (option == nullptr) return;
  controls.Check[number].checked = checked;
  set_option(settings_, *option, checked ? "1" : "0");
  if (number == 12) {
    controls.txtYYYY.read_only = false;
    if (checked) set_year_from_system();
  }
  colour_options();
  if (option->saved == Option::Saved::kAtOnce) save_settings();
  shell_.mirror();
}

void MainWindow::set_year_from_system() {
  constexpr int kYearsFrom = 1900;
  settings_.year = std::to_string(shell_.now().tm_year + kYearsFrom);
  controls.txtYYYY.text = settings_.year;
  controls.txtYYYY.read_only = true;
}

TimeMode MainWindow::show_time_mode() {
  const TimeMode mode = set_time_mode(settings_.time_conversion, kind_ == LogKind::kAdif);
  const TimeModeExplanation explanation = explain_time_mode(mode);
  controls.lblJ2U[0].text = explanation.first_line;
  controls.lblJ2U[1].text = explanation.second_line;
  return mode;
}

void MainWindow::select_option1(std::size_t index) {
  settings_.time_conversion = static_cast<std::int16_t>(index);
  select(controls.Option1, settings_.time_conversion);
  settings_.zlog_time = time_mode_keyword(show_time_mode());
  colour_options();
  save_settings();
  shell_.mirror();
}

void MainWindow::select_option2(std::size_t index) {
  clear_counts();
  settings_.state_remarks = static_cast<std::int16_t>(index);
  select(controls.Option2, settings_.state_remarks);
  colour_options();
  save_settings();
  shell_.mirror();
}

void MainWindow::select_option3(std::size_t index) {
  settings_.zlog_in_jst = static_cast<std::int16_t>(index);
  settings_.zlog_zone_chosen = "1";
  zlo_zone_ = index == 1 ? 'J' : 'U';
  show_zone();
  save_settings();
  shell_.mirror();
}

// What the user says of the zone of the open log; nothing: the log itself tells.
std::optional<char> MainWindow::chosen_zone() const {
  return kind_ == LogKind::kZlogZlo ? zlo_zone_ : zlog_zone(settings_);
}

// In which zone the open log will be read, and why. What a log tells of itself does not become the
// setting: the next one, which may tell nothing, has nothing to do with it.
void MainWindow::show_zone() {
  controls.lblZone = {};
  std::optional<LogZone> zone;
  if (kind_ == LogKind::kZlogAll) zone = all_zone(chosen_zone());
  if (contest_) zone = zlo_zone(*contest_, chosen_zone());
  const bool jst = zone ? zone->letter == 'J' : settings_.zlog_in_jst == 1;
  select(controls.Option3, jst ? 1 : 0);
  colour_options();
  if (!zone) return;
  controls.lblZone.text = zone_text(*zone);
  if (zone->against_file) controls.lblZone.colour = Colour::kLightRed;
}

void MainWindow::edit_was(std::string_view text) {
  controls.txtWas.text = settings_.state_keyword = text;  // reaches the file with the next write
}

void MainWindow::clear_was() {
  edit_was("");
}

void MainWindow::edit_year(std::string_view text) {
  controls.txtYYYY.text = settings_.year = text;
  save_settings();
}

void MainWindow::resize(int width, int height) {
  controls.width = std::min(width, kMostWidth);
  controls.height = std::min(height, kMostHeight);
}

void MainWindow::clear_counts() {
  controls.lblMsg = {};
  controls.lblInfo.text.clear();
  controls.lblNotes.text.clear();
  controls.cmdReport.visible = false;
  controls.progress = 0;
}

void MainWindow::fill_grids() {
  band_file_.fill(folder_, bands);
  trace("     MSFlexGrid1   BAND");
  mode_file_.fill(folder_, modes);
  trace("     MSFlexGrid2   MODE");
  bands.tell = [this](bool changed) { tell_of_edit(changed, band_file_.left_out(bands)); };
  modes.tell = [this](bool changed) { tell_of_edit(changed, mode_file_.left_out(modes)); };
}

void MainWindow::tell_of_edit(bool changed, const std::string& left_out) {
  controls.lblSaving.text =
      changed ? "変換テーブル: 次の起動から使われます"
              : "変換テーブル: No の欄と灰色の行は書き換えられません (灰色の行は保存されません)";
  if (changed && !left_out.empty()) controls.lblSaving.text += "。" + left_out;
  controls.lblSaving.visible = true;
  shell_.mirror();
}

void MainWindow::save_grids() {
  try {
    const KeepRule rule{{}, [this] { return shell_.now(); }, {}};
    const std::string text = band_file_.save(bands, rule) + mode_file_.save(modes, rule);
    if (!text.empty()) tell(Shell::Icon::kInformation, "変換テーブルの保存", text);
  } catch (const Error& error) {
    tell(Shell::Icon::kCritical, "変換テーブルの保存", error.what());
  }
}

void MainWindow::show_edit_help() {
  tell(Shell::Icon::kInformation, "　　編集方法の説明",
       "　　　　　　　「編集方法の説明」\r\n\r\n"
       "編集するセルにカーソルを合わせて 「 Ｅｎｔｅｒ 」 キーを押して下さい。\r\n\r\n"
       "セルが黄色に変わります。 空白欄なら文字を挿入して下さい。\r\n\r\n"
       "すでに入力されている欄の場合には、適宜、編集して下さい。\r\n\r\n"
       "「 Ｅｎｔｅｒ 」 キーを押せば確定します。");
}

void MainWindow::exit() {
  bands.grid_focused();  // what is being typed counts
  modes.grid_focused();
  save_settings();
  std::error_code error;
  std::vector<fs::path> indexes;
  for (const auto& entry : fs::directory_iterator(folder_, error)) {
    const bool index = equal_ignoring_case(path_text(entry.path().extension()), ".hdx");
    if (index && entry.is_regular_file(error)) indexes.push_back(entry.path());
  }
  for (const fs::path& index : indexes) fs::remove(index, error);
  save_grids();
  shell_.quit();
}

}  // namespace tobarine
