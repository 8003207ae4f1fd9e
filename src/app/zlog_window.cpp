#include "app/zlog_window.h"

#include <system_error>

#include "hamlog/adif_reader.h"
#include "text/error.h"
#include "text/folder.h"

namespace tobarine {
namespace {

namespace fs = std::filesystem;

constexpr std::array<std::string_view, 3> kTimeModes = {"None", "ALL_J", "ALL_U"};

// The settings behind the check boxes.
struct CheckSetting {
  std::size_t number;
  std::string Settings::*setting;
};
constexpr CheckSetting kChecks[] = {
    {1, &Settings::zlog_all_jst},   {2, &Settings::del_power_flag}, {4, &Settings::OP_name_tenki},
    {5, &Settings::csv_qth},        {7, &Settings::TX_NR_001},      {8, &Settings::freq_only_MHz_2},
    {10, &Settings::COMMENT_tenki}, {11, &Settings::TX_NR_tenki},   {12, &Settings::AGE_tenki},
    {13, &Settings::IOTA_tenki},
};

// In the order of kZlogCombos.
constexpr std::array<std::string Settings::*, 4> kRemarks = {
    &Settings::COMMENT_rmks, &Settings::TX_NR_rmks, &Settings::AGE_rmks, &Settings::IOTA_rmks};

}  // namespace

ZlogControls::ZlogControls() {
  Check[1].text = "zLog．all  全て ＪＳＴ に変換";
  Check[2].text = "受信番号の電力の文字 H/M/L/P を取る";
  Check[4].text = "OP name を転記する。 ";
  Check[5].text = "QTH を CSV に転記する";
  Check[7].text = "シリアルナンバー";
  Check[8].text = "周波数は　MHz 単位のみにする";
  Check[10].text = "COMMENT を転記する。";
  Check[11].text = "TX# を転記する。";
  Check[12].text = "<AGE: を転記する";
  Check[13].text = "IOTA を転記する。";
  Option2[0].text = "変換なし";
  Option2[1].text = "全てJST";
  Option2[2].text = "全てUTC";
  cmdOpen.text = "開く *.adi";
  cmdConvert.text = "変換　A -> Z";
  cmdConvert.enabled = false;
  lblInFile.text = "N1MM などの ADIF を開いて下さい。";
  lblInFile.colour = Colour::kLightRed;
  mnuCSV.text = "[ CSV の編集 ]";
  mnuALL.text = "[ zLog ALL の編集 ]";
  mnuBack.text = "[ 戻る ]";
  mnuCSV.enabled = mnuALL.enabled = false;
}

void ZlogWindow::tell(const std::string& text) {
  shell_.show_message(Shell::Icon::kCritical, {"ADIF to zLog", text});
}

void ZlogWindow::load() {
  main_.save_settings();  // what the main window has not written yet must not be lost
  main_.shared_settings() = read_settings(file_in(main_.folder(), kSettingsFile));
  show_settings();
  shell_.mirror();
}

void ZlogWindow::show_settings() {
  const Settings& s = main_.settings();
  const auto colour = [](Control& control) {
    control.colour = control.checked ? Colour::kLightBlue : Colour::kBlack;
  };
  for (const CheckSetting& check : kChecks) {
    controls.Check[check.number].checked = s.*check.setting == "1";
    colour(controls.Check[check.number]);
  }
  const AdifToZlogOptions options = adif_to_zlog_options(s);
  controls.Option2[0].checked = !options.zlog.zlo_to_jst && s.utc_jst_str != kTimeModes[2];
  controls.Option2[1].checked = options.zlog.zlo_to_jst;
  controls.Option2[2].checked = !controls.Option2[0].checked && !controls.Option2[1].checked;
  for (Control& option : controls.Option2) colour(option);
  for (std::size_t i = 0; i < kRemarks.size(); ++i) {
    controls.Combo[i].text = s.*kRemarks[i] == "2" ? "2" : "1";
  }
  controls.Text7.text = options.zlog.sent_number;
}

void ZlogWindow::check(std::size_t number, bool checked) {
  for (const CheckSetting& known : kChecks) {
    if (known.number == number) main_.shared_settings().*known.setting = checked ? "1" : "0";
  }
  main_.save_settings();
  show_settings();
  shell_.mirror();
}

void ZlogWindow::select_option2(std::size_t index) {
  main_.shared_settings().utc_jst_str = kTimeModes[index];
  main_.save_settings();
  show_settings();
  shell_.mirror();
}

void ZlogWindow::choose_remarks(std::size_t combo, std::string_view remarks) {
  main_.shared_settings().*kRemarks[combo] = remarks;
  main_.save_settings();
  show_settings();
}

void ZlogWindow::edit_sent_number(std::string_view text) {
  controls.Text7.text = main_.shared_settings().set_STX = text;
  main_.save_settings();
}

void ZlogWindow::open() {
  const auto file = shell_.choose_file(
      {"N1MM のADIF形式ﾌｧｲﾙ *.adi を開く", "ADIF (*.adi *.adif)", {"*.adi", "*.adif"}});
  if (file) open_file(*file);
}

void ZlogWindow::open_file(const fs::path& file) {
  if (main_.running()) return;
  try {
    const AdifFileInfo info = scan_adif(file);
    if (!info.is_adif) throw FileError(file, "ADIF ではないようです (CALL のタグがありません)");
    input_ = file;
    base_ = output_path(file, "").replace_extension();
    controls.lblInFile = controls.lblOutFile = controls.lblMsg = {};
    controls.lblInFile.text = path_text(input_);
    controls.lblOutFile.text = path_text(base_) + ".all  .zlo  .csv";
    controls.lblIn.text = "入力数: " + std::to_string(info.contacts) + " 件";
    controls.lblInfo.text.clear();
    controls.lblNotes.text.clear();
    controls.mnuCSV.enabled = controls.mnuALL.enabled = false;
    controls.cmdConvert.enabled = true;
  } catch (const Error& error) {
    tell(error.what());
  }
  shell_.mirror();
}

void ZlogWindow::convert() {
  if (main_.running() || !controls.cmdConvert.enabled) return;
  main_.set_running(true);
  controls.cmdConvert.enabled = controls.cmdOpen.enabled = false;
  controls.lblMsg = {};
  shell_.mirror();
  const AdifToZlogJob job{input_, base_, adif_to_zlog_options(main_.settings())};
  try {
    report_ = run_adif_to_zlog(job, main_.conversion_tables(), main_.call_tables(),
                               main_.place_tables(), state_, main_.context_for(controls.progress));
    controls.lblInfo.text = "変換数: " + std::to_string(report_.written) + " 件";
    controls.lblMsg.text = report_.stopped_by ? "途中で止まりました" : "処理終了";
    if (report_.stopped_by) controls.lblMsg.colour = Colour::kLightRed;
    controls.lblNotes.text = report_text(report_);
    if (report_.stopped_by) tell(*report_.stopped_by);
  } catch (const std::exception& error) {
    tell(error.what());
  }
  main_.set_running(false);
  controls.progress = 0;
  controls.cmdConvert.enabled = controls.cmdOpen.enabled = true;
  std::error_code error;
  controls.mnuCSV.enabled = fs::exists(job.output(".csv"), error);
  controls.mnuALL.enabled = fs::exists(job.output(".all"), error);
  shell_.mirror();
}

void ZlogWindow::edit(std::string_view extension) {
  fs::path file = base_;
  file += extension;
  main_.set_edit_file(file);
  try {
    shell_.open_editor(file);
  } catch (const Error& error) {
    tell(error.what());  // an empty file, for one
  }
}

void ZlogWindow::edit_csv() {
  if (controls.mnuCSV.enabled) edit(".csv");
}
void ZlogWindow::edit_all() {
  if (controls.mnuALL.enabled) edit(".all");
}

}  // namespace tobarine
