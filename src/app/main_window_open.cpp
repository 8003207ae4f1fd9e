// The main window's open and view commands.
#include <system_error>
#include <utility>

#include "app/adif_question.h"
#include "app/main_window.h"
#include "hamlog/adif_reader.h"
#include "hamlog/hamlog_csv.h"
#include "hamlog/hdb_reader.h"
#include "text/error.h"
#include "text/folder.h"
#include "zlog/all_reader.h"
#include "zlog/contest.h"
#include "zlog/zlo_reader.h"

namespace tobarine {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kToAdif =
    "\r\nLogger32 や eQSL.cc にて使用可能なADIF形式に変換します。 ";

}  // namespace

void MainWindow::open_file(const fs::path& file) {
  if (running_) return;
  try {
    std::string first_line;
    if (!recognise_log(file, {})) {
      LineReader lines(file);
      std::string_view line;
      if (lines.next(line)) first_line = line;
    }
    const auto kind = recognise_log(file, first_line);
    if (!kind)
      throw FileError(file,
                      "ログのファイルではないようです。Hamlog の CSV、zLog の .ALL か "
                      ".ZLO、ADIF を開いて下さい");
    open_as(*kind, file);
  } catch (const std::exception& error) {
    tell(Shell::Icon::kCritical, "Tobarine", error.what());
  }
  shell_.mirror();
}

void MainWindow::open_as(LogKind kind, const fs::path& file) {
  switch (kind) {
    case LogKind::kHamlogHdb:
      open_database(file);
      break;
    case LogKind::kHamlogCsv:
      open_hamlog_csv(file);
      break;
    case LogKind::kZlogAll:
      open_all(file);
      break;
    case LogKind::kZlogZlo:
      open_zlo(file);
      break;
    case LogKind::kAdif:
      open_adif(file);
      break;
  }
}

void MainWindow::open_hdb() {
  const auto file = shell_.choose_file(
      {"THW5 の Hamlog.hdb 形式ファイル *.hdb を開く", "THW5 Hamlog.hdb ﾌｧｲﾙ(*.hdb)", {"*.hdb"}});
  if (file) open_database(*file);
}

void MainWindow::open_database(const fs::path& file) {
  set_files(file, LogKind::kHamlogHdb, "adi");
  bind_library_for(file);
  show_input_count(count_hamlog_hdb(file, *library_));
  controls.lblConv.text = "THW5 の Hamlog.hdb 形式ﾌｧｲﾙから";
  controls.lblConv.text += kToAdif;
  controls.frameFullWidth.text = " Rmks に全角が含まれていても Comment に転記する ";
  enable_by_kind();
}

// The first time the user is asked where Turbo HAMLOG's libraries are.
void MainWindow::bind_library_for(const fs::path& database) {
  try {
    library_ = bind_library(database);
  } catch (const HamlogLibraryMissing&) {
    const auto folder = ask_for_hamlog_folder(database);
    if (!folder) throw;
    const std::string before = std::exchange(settings_.hamlog_folder, path_text(*folder));
    try {
      library_ = bind_library(database);
    } catch (const Error&) {
      settings_.hamlog_folder = before;
      throw;
    }
    save_settings();
  }
}

std::optional<fs::path> MainWindow::ask_for_hamlog_folder(const fs::path& database) {
  Choice choice{std::string(kHamlogLibrary),
                "Hamlog.hdb を読むには、Turbo HAMLOG のプログラム Hamlog50.dll を動かします。\r\n",
                {}};
  const fs::path beside = fs::absolute(database).parent_path();
  fs::path found;
  std::error_code error;
  for (const fs::path& folder : {beside.parent_path(), beside}) {
    if (fs::exists(file_in(folder, kHamlogLibrary), error)) found = folder;
  }
  if (!found.empty()) {
    choice.text +=
        "次のフォルダーのものを使いますか？ (一度だけお尋ねします)\r\n\r\n" + path_text(found) +
        "\r\n\r\nTurbo HAMLOG をインストールしたフォルダーでなければ、使わないで下さい。";
    choice.answers.emplace_back("使う");
  } else {
    choice.text += "Turbo HAMLOG をインストールしたフォルダーの Hamlog50.dll を選んで下さい。";
  }
  choice.answers.emplace_back("Hamlog50.dll を選ぶ…");
  const auto answer = shell_.ask(choice);
  if (!answer) return std::nullopt;
  if (*answer + 1 < choice.answers.size()) return found;
  const auto library = shell_.choose_file(
      {"Turbo HAMLOG の Hamlog50.dll を選ぶ", "Hamlog50.dll", {std::string(kHamlogLibrary)}});
  return library ? std::optional(library->parent_path()) : std::nullopt;
}

void MainWindow::open_csv() {
  const auto file = shell_.choose_file({"Hamlog v5.00以降のﾌｧｲﾙ *.csv を開く",
                                        "THW5 の csv　形式ﾌｧｲﾙ(*.csv);loglist.txt",
                                        {"*.csv", "loglist.txt"}});
  if (file) open_hamlog_csv(*file);
}

void MainWindow::open_adi() {
  const auto file = shell_.choose_file(
      {"Logger32 のADIF形式ﾌｧｲﾙ *.adi を開く", "Logger32のﾌｧｲﾙ(*.adi)", {"*.adi", "*.adif"}});
  if (file) open_adif(*file);
}

void MainWindow::open_zlog_all() {
  const auto file =
      shell_.choose_file({"zLog の *.all を開く", "zLog の各種ﾌｧｲﾙ *.all ", {"*.all"}});
  if (file) open_all(*file);
}

void MainWindow::open_zlog_zlo() {
  const auto file =
      shell_.choose_file({"zLog の *.zlo を開く", "zLog の各種ﾌｧｲﾙ *.zlo ", {"*.zlo"}});
  if (file) open_zlo(*file);
}

// Nothing can be converted until the file has turned out to be what it should be.
void MainWindow::set_files(const fs::path& input, LogKind kind, std::string_view extension) {
  kind_ = kind;
  accepted_ = false;
  input_ = fs::absolute(input).lexically_normal();
  output_ = output_path(input_, extension);
  report_ = {};
  contest_.reset();
  zlo_zone_.reset();
  show_zone();
  controls.mnuDisp_report.enabled = false;
  clear_counts();
  controls.lblInFile = controls.lblOutFile = controls.lblConv = {};
  controls.lblInFile.text = path_text(input_);
  controls.lblOutFile.text = path_text(output_);
  output_note_ = output_path_note(input_, output_);
  if (!output_note_.empty()) {
    output_note_ += "。「出力先…」で変えられます";
    controls.lblNotes.text = output_note_;
  }
  controls.cmdH2L.text = "変換　H -> L";
  controls.lblIn.text.clear();
  controls.lblContest.text.clear();
  controls.mnuDisp.enabled = true;
  controls.mnuDisp_in.enabled = controls.tool("表示 i").enabled = true;
  enable_conversions(false, false);
  enable_views();
}

void MainWindow::open_hamlog_csv(const fs::path& file) {
  set_files(file, LogKind::kHamlogCsv, "adi");
  const std::string_view problem = layout_problem(look_at_hamlog_csv(file).layout);
  if (!problem.empty()) {
    controls.lblConv.text = problem;
    controls.lblConv.colour = Colour::kLightRed;
    return;
  }
  controls.lblConv.text = "Hamlog v5.00以降で作成した 新ＣＳＶ 形式ﾌｧｲﾙから";
  controls.lblConv.text += kToAdif;
  show_input_count(count_hamlog_lines(file));
  controls.frameFullWidth.text = " Rmks に全角が含まれていても Comment に転記する ";
  enable_by_kind();
}

void MainWindow::open_adif(const fs::path& file) {
  const AdifFileInfo info = scan_adif(file);
  if (!info.is_adif) throw FileError(file, "ADIF ではないようです (CALL のタグがありません)");
  const auto reading = ask_how_to_read(shell_, file, info.layout);
  if (!reading) return;
  set_files(file, LogKind::kAdif, "csv");
  adif_reading_ = *reading;
  controls.lblConv.text =
      "Logger32の ADIF形式のファイルから\r\nHamlog にて読み込み可能なcsv形式に変換します。 ";
  show_input_count(info.contacts);
  enable_by_kind();
}

void MainWindow::open_all(const fs::path& file) {
  LineReader lines(file);
  std::string_view line;
  const TextLogForm form = text_log_form(lines.next(line) ? line : std::string_view());
  if (form == TextLogForm::kZlogAll && !ask_zone()) return;
  set_files(file, LogKind::kZlogAll, "adi");
  if (form != TextLogForm::kZlogAll) {
    refuse_text_log(form);
    return;
  }
  show_zlog("all", count_all_contacts(file));
}

// A text log does not say its zone; the answer is kept. False: the user gives none.
bool MainWindow::ask_zone() {
  if (zlog_zone(settings_)) return true;
  const auto answer =
      shell_.ask({" ｚＬｏｇ　のデータの時刻は？ ",
                  ".ALL のファイルには、時刻が JST か UTC かが書かれていません。\r\n"
                  "このログは、zLog のどちらの時刻で記録しましたか。\r\n\r\n"
                  "国内コンテストはたいてい JST です。間違えると全部 9 時間ずれます。\r\n"
                  "答えは次からも使われ、窓の「U T C」「J S T」でいつでも変えられます。",
                  {"J S T", "U T C"}});
  if (!answer) return false;
  select_option3(*answer == 0 ? 1 : 0);
  return true;
}

void MainWindow::open_zlo(const fs::path& file) {
  set_files(file, LogKind::kZlogZlo, "adi");
  refuse_foreign_zlo(file);
  contest_ = read_contest(file);
  controls.lblContest.text = contest_->name;
  show_zone();
  show_zlog("zlo", contest_->contacts);
}

void MainWindow::show_zlog(std::string_view form, std::size_t contacts) {
  controls.lblConv.text = "zLog の " + std::string(form) + " 形式ファイルから";
  controls.lblConv.text += kToAdif;
  controls.cmdH2L.text = "変換　Z -> L";
  show_input_count(contacts);
  enable_by_kind();
}

void MainWindow::refuse_text_log(TextLogForm form) {
  controls.lblInFile.text = "入力ファイル形式が違います";
  controls.lblInFile.colour = Colour::kLightRed;
  controls.lblOutFile.colour = Colour::kLightRed;
  controls.lblConv.colour = Colour::kLightRed;
  // The line names the form that the file has, although its wording speaks of the choice.
  controls.lblConv.text = form == TextLogForm::kZlogTxt
                              ? "「開く」での指定は ｚＬｏｇのＴＸＴ形式"
                              : "「開く」での指定は ＨａｍｌｏｇのＴＸＴ形式";
  controls.lblConv.text += "\r\n指定したファイル形式と「開く」でのファイル形式が違います。";
}

void MainWindow::show_input_count(std::size_t count) {
  controls.lblIn.text = "入力数: " + std::to_string(count) + " 件";
}

void MainWindow::enable_conversions(bool h2l, bool l2h) {
  controls.cmdH2L.enabled = controls.tool("変換 H2L").enabled = h2l;
  controls.cmdeqsl.enabled = controls.tool("eQSL").enabled = h2l;
  controls.cmdL2H.enabled = controls.tool("変換 L2H").enabled = l2h;
  controls.cmdOutput.enabled = h2l || l2h;
}

void MainWindow::enable_views() {
  std::error_code error;
  const bool there = !output_.empty() && fs::exists(output_, error);
  controls.mnuDisp_out.enabled = controls.tool("表示 o").enabled = there;
}

// Which times can be converted depends on the direction.
void MainWindow::enable_by_kind() {
  accepted_ = true;
  const bool from_adif = kind_ == LogKind::kAdif;
  for (std::size_t i = 0; i < controls.Option1.size(); ++i) {
    controls.Option1[i].enabled = (i == 2) != from_adif;
  }
  controls.Check[8].enabled = !from_adif;
  select_option1(from_adif ? 0 : 2);
  enable_conversions(!from_adif, from_adif);
}

void MainWindow::view(const fs::path& file) {
  std::error_code error;
  if (!fs::exists(file, error)) {
    controls.lblConv.text = "ﾌｧｲﾙがありません";
    controls.lblConv.colour = Colour::kLightRed;
    return;
  }
  shell_.open_viewer(file, 0);
}

void MainWindow::view_input() {
  if (controls.mnuDisp_in.enabled) view(input_);
}
void MainWindow::view_output() {
  if (controls.mnuDisp_in.enabled) view(output_);
}
void MainWindow::view_table_help() {
  view(file_in(folder_, "変換テーブルの説明.txt"));
}
void MainWindow::view_report() {
  if (controls.mnuDisp_report.enabled) shell_.open_report();
}

void MainWindow::open_zlog_window() {
  shell_.open_zlog_window();
}

void MainWindow::edit_hamlog_csv() {
  if (edit_file_.empty()) {
    const auto file = shell_.choose_file(
        {"編集するファイルを開く", "CSV、zLog ALL (*.csv *.all)", {"*.csv", "*.all", "*.txt"}});
    if (!file) return;
    edit_file_ = *file;
  }
  try {
    shell_.open_editor(edit_file_);
  } catch (...) {
    edit_file_.clear();  // the next time, the user is asked for another
    throw;
  }
}

}  // namespace tobarine
