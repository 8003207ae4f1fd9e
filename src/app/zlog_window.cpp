#include "app/zlog_window.h"

#include <algorithm>
#include <system_error>

#include "app/adif_question.h"
#include "app/option_table.h"
#include "app/output_choice.h"
#include "hamlog/adif_reader.h"
#include "text/error.h"
#include "text/folder.h"
#include "text/strings.h"

namespace tobarine {
namespace fs = std::filesystem;

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
  cmdOutput.text = "出力先…";
  cmdOutput.tip = "出力の名前を選びます (別のログを開くまで)";
  cmdConvert.enabled = cmdOutput.enabled = false;
  lblInFile.text = "N1MM などの ADIF を開いて下さい。";
  lblInFile.colour = Colour::kLightRed;
  mnuCSV.text = "[ CSV の編集 ]";
  mnuALL.text = "[ zLog ALL の編集 ]";
  mnuBack.text = "[ 戻る ]";
  mnuCSV.enabled = mnuALL.enabled = false;
}

void ZlogWindow::tell(const std::string& text) {
  shell_.mirror();
  shell_.show_message(Shell::Icon::kCritical, {"ADIF to zLog", text});
}

void ZlogWindow::show_settings() {
  const Settings& s = main_.settings();
  const auto colour = [](Control& control) {
    control.colour = control.checked ? Colour::kLightBlue : Colour::kBlack;
  };
  for_each_zlog_control(controls, [&s](std::string_view name, Control& control) {
    show_option(s, Option::Window::kZlog, name, control);
  });
  // The main window's choices of the same setting are shown as what they come to here.
  controls.Option2[1].checked = adif_to_zlog_options(s).zlog.zlo_to_jst;
  controls.Option2[0].checked = !controls.Option2[1].checked && !controls.Option2[2].checked;
  for (Control& check : controls.Check) colour(check);
  for (Control& option : controls.Option2) colour(option);
}

void ZlogWindow::set(std::string_view control, std::string_view value) {
  if (const Option* const option = find_option(Option::Window::kZlog, control)) {
    set_option(main_.shared_settings(), *option, value);
  }
  main_.save_settings();
  show_settings();
  shell_.mirror();
}

void ZlogWindow::check(std::size_t number, bool checked) {
  set("Check" + std::to_string(number), checked ? "1" : "0");
}

void ZlogWindow::select_option2(std::size_t index) {
  set("Option2", find_option(Option::Window::kZlog, "Option2")->values[index].value);
}

void ZlogWindow::choose_remarks(std::size_t combo, std::string_view remarks) {
  set(kZlogCombos[combo], remarks);
}

void ZlogWindow::edit_sent_number(std::string_view text) {
  controls.Text7.text = main_.shared_settings().sent_number = text;
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
    const auto reading = ask_how_to_read(shell_, file, info.layout);
    if (!reading) return;
    adif_reading_ = *reading;
    input_ = file;
    controls.lblInFile = controls.lblOutFile = controls.lblMsg = {};
    controls.lblInFile.text = path_text(input_);
    show_base(output_path(file, "").replace_extension());
    controls.lblIn.text = "入力数: " + std::to_string(info.contacts) + " 件";
    output_note_ = output_path_note(input_, output_path(file, "all"));
    if (!output_note_.empty()) output_note_ += "。「出力先…」で変えられます";
    controls.lblNotes.text = output_note_;
    controls.mnuCSV.enabled = controls.mnuALL.enabled = false;
    controls.cmdConvert.enabled = controls.cmdOutput.enabled = true;
  } catch (const Error& error) {
    tell(error.what());
  }
  shell_.mirror();
}

void ZlogWindow::show_base(const fs::path& base) {
  base_ = base;
  controls.lblOutFile.text = path_text(base_) + ".all  .zlo  .csv";
  controls.lblInfo.text.clear();
}

bool ZlogWindow::choose_base() {
  const auto file = shell_.choose_output(
      {"出力先を選ぶ (.all、.zlo、.csv の三つを書きます)", "zLog (*.all)", {"*.all"}},
      fs::path(base_) += ".all");
  if (!file) return false;
  const std::string ending = path_text(file->extension());
  const bool known = std::ranges::any_of(AdifToZlogJob::kEndings, [&ending](std::string_view one) {
    return equal_ignoring_case(ending, one);
  });
  show_base(known ? fs::path(*file).replace_extension() : *file);
  output_note_.clear();
  controls.lblNotes.text.clear();
  return true;
}

void ZlogWindow::choose_output() {
  if (main_.running() || !controls.cmdOutput.enabled) return;
  choose_base();
  shell_.mirror();
}

void ZlogWindow::convert() {
  if (main_.running() || !controls.cmdConvert.enabled) return;
  const auto outputs = [this] { return AdifToZlogJob{input_, base_, {}}.outputs(); };
  if (!settle_outputs(shell_, outputs, [this] { return choose_base(); })) return;
  main_.set_running(true);
  show_settings();
  controls.cmdConvert.enabled = controls.cmdOpen.enabled = controls.cmdOutput.enabled = false;
  controls.lblMsg = {};
  shell_.mirror();
  const AdifToZlogJob job{input_, base_, adif_to_zlog_options(main_.settings()), adif_reading_};
  try {
    report_ = run_adif_to_zlog(job, main_.conversion_tables(), main_.call_tables(),
                               main_.place_tables(), state_, main_.context_for(controls.progress));
    if (!output_note_.empty()) report_.findings.add(FindingKind::kOutputName, 0, "", output_note_);
    controls.lblInfo.text = "変換数: " + std::to_string(report_.written) + " 件";
    const bool failed = report_.stopped_by && !main_.stopped_by_user();
    controls.lblMsg.text = failed               ? "途中で止まりました"
                           : report_.stopped_by ? "中止しました"
                                                : "処理終了";
    if (failed) controls.lblMsg.colour = Colour::kLightRed;
    controls.lblNotes.text = report_text(report_, Front::kWindow);
    if (report_.stopped_by && !failed) controls.lblNotes.text.insert(0, *report_.stopped_by + "\n");
    if (failed) tell(*report_.stopped_by);
  } catch (const std::exception& error) {
    controls.lblMsg.text = "途中で止まりました";
    controls.lblMsg.colour = Colour::kLightRed;
    tell(error.what());
  }
  main_.set_running(false);
  controls.progress = 0;
  controls.cmdConvert.enabled = controls.cmdOpen.enabled = controls.cmdOutput.enabled = true;
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
