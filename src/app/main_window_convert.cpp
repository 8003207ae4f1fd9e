// The main window's conversions and tools.
#include "app/main_window.h"
#include "app/output_choice.h"
#include "app/program_folder.h"
#include "app/reference_tools.h"
#include "convert/h2l.h"
#include "convert/l2h.h"
#include "text/error.h"
#include "text/file_identity.h"
#include "text/folder.h"
#include "text/temporary_file.h"

namespace tobarine {

namespace {

namespace fs = std::filesystem;

// The tables, loaded now if they are not there yet.
template <typename Tables>
const Tables& loaded(std::unique_ptr<Tables>& kept, const std::filesystem::path& folder) {
  if (!kept) {
    auto tables = std::make_unique<Tables>();
    tables->load(folder);
    kept = std::move(tables);
  }
  return *kept;
}

}  // namespace

const CallTables& MainWindow::call_tables() {
  return loaded(call_tables_, folder_);
}
const PlaceTables& MainWindow::place_tables() {
  return loaded(place_tables_, folder_);
}

void MainWindow::set_running(bool running) {
  running_ = controls.cmdStop.enabled = running;
}

RunContext MainWindow::context_for(double& bar) {
  stop_wished_ = false;
  return {[this, &bar](double done) {
            bar = done;
            stop_wished_ = !shell_.keep_going();
            return !stop_wished_;
          },
          [this] { return shell_.now(); }};
}

// For files that no run reports on.
KeepRule MainWindow::keep_rule() {
  return {{},
          [this] { return shell_.now(); },
          [this](const fs::path& file, const fs::path& backup) {
            controls.lblNotes.text += std::string(finding_heading(FindingKind::kFileKept)) + ": " +
                                      kept_file_text(file, backup) + "\n";
          }};
}

void MainWindow::choose_output_command() {
  if (controls.cmdOutput.enabled) choose_output();
}

bool MainWindow::choose_output() {
  const std::string ending = kind_ == LogKind::kAdif ? ".csv" : ".adi";
  auto file =
      shell_.choose_output({"出力先を選ぶ", "出力 (*" + ending + ")", {"*" + ending}}, output_);
  if (!file) return false;
  if (!file->has_extension()) *file += ending;
  refuse_shared_files({input_}, {*file});
  output_ = *file;
  output_note_.clear();
  clear_counts();
  controls.lblOutFile.text = path_text(output_);
  enable_views();
  return true;
}

bool MainWindow::settle_output() {
  return settle_outputs(
      shell_, [this] { return std::vector{output_}; }, [this] { return choose_output(); });
}

// All that a conversion does before and after its run.
void MainWindow::convert(const std::function<ConversionReport(const RunContext&)>& run) {
  save_settings();
  clear_counts();
  const bool h2l = controls.cmdH2L.enabled;
  enable_conversions(false, false);
  set_running(true);
  shell_.mirror();
  const auto finish = [&] {
    set_running(false);
    controls.progress = 0;
    enable_conversions(h2l, !h2l);
    enable_views();
  };
  try {
    report_ = run(context_for(controls.progress));
  } catch (...) {
    finish();
    controls.lblMsg.text = "途中で止まりました";
    controls.lblMsg.colour = Colour::kLightRed;
    throw;
  }
  if (!output_note_.empty()) report_.findings.add(FindingKind::kOutputName, 0, "", output_note_);
  finish();
  show_result();
}

void MainWindow::show_result() {
  const bool failed = report_.stopped_by && !stop_wished_;
  controls.lblInfo.text = "変換数: " + std::to_string(report_.written) + " 件";
  controls.lblMsg.text = failed               ? "途中で止まりました"
                         : report_.stopped_by ? "中止しました"
                                              : "処理終了";
  if (failed) controls.lblMsg.colour = Colour::kLightRed;
  controls.lblNotes.text = file_notes(report_, Front::kWindow);
  if (report_.stopped_by && stop_wished_) controls.lblNotes.text += *report_.stopped_by + "\n";
  controls.mnuDisp_report.enabled =
      !report_text(report_, Front::kWindow).empty() || report_.stopped_by;
  const std::size_t told = report_.findings.about_contacts();
  controls.cmdReport.text = "お知らせが " + std::to_string(told) + " 件あります";
  controls.cmdReport.visible = told > 0;
  trace("変換数: " + std::to_string(report_.written));
  if (failed) tell(Shell::Icon::kCritical, "Tobarine", *report_.stopped_by);
}

void MainWindow::run_h2l_command() {
  run_to_adif(false);
}
void MainWindow::run_eqsl_command() {
  run_to_adif(true);
}

void MainWindow::run_to_adif(bool eqsl) {
  if (!controls.cmdH2L.enabled || !settle_output()) return;
  convert([&](const RunContext& context) {
    H2lJob job;
    job.input = input_;
    job.output = output_;
    job.options = h2l_options(settings_);
    job.source = log_kind_info(*kind_).source;
    job.library = library_.get();
    job.zlog_zone = chosen_zone();
    const auto run = eqsl ? run_eqsl : run_h2l;
    if (!is_zlog(job.source)) return run(job, tables_, call_tables(), context);
    // Under a name of its own while it is in use: another window may be converting, too.
    TemporaryFile intermediate({folder_}, "zlog_1");
    job.intermediate = intermediate.path();
    ConversionReport report = run(job, tables_, call_tables(), context);
    const fs::path shown = file_in(folder_, "zlog_1.csv");
    intermediate.take_mode_of(shown);
    intermediate.replace(shown);
    return report;
  });
}

void MainWindow::run_l2h_command() {
  if (!controls.cmdL2H.enabled || !settle_output()) return;
  convert([&](const RunContext& context) {
    const L2hJob job{input_, output_, l2h_options(settings_, settings_.time_conversion),
                     temporary_folders(folder_), adif_reading_};
    return run_l2h(job, tables_, call_tables(), place_tables(), l2h_state_, context);
  });
}

void MainWindow::begin_waiting(std::string_view message) {
  controls.lblMsg = {};
  controls.lblMsg.text = message;
  controls.progress = kBusy;
}

void MainWindow::end_waiting() {
  controls.lblMsg = {};
  controls.progress = 0;
}

void MainWindow::check_jarl() {
  look_for_new_lists(false);
}

namespace {

// One quiet line, or nothing: nobody asked just now.
std::string news_of_lists(const std::array<std::string, 3>& dates,
                          const std::array<std::string, 3>& ours) {
  for (std::size_t i = 0; i < dates.size(); ++i) {
    if (is_newer_list(dates[i], ours[i])) {
      return "JARL に新しい JCC , JCG , 区リストがあります ([ Tool ] から取得できます)";
    }
  }
  return {};
}

std::string plain_http_text(bool plain_http) {
  return plain_http ? "\n" + std::string(kPlainHttpNote) + "。\n" : std::string();
}

constexpr const char* kMisprintNote =
    "。\nリストの件数の誤植と思われるときは、三つのリストをブラウザーでプログラムフォルダーに保存し"
    "て、"
    "「JCC , JCG , 区リストの作成」で作れます。";

}  // namespace

void MainWindow::look_for_new_lists(bool at_start) {
  if (!at_start) begin_waiting("JARL のリストの更新日付けを調べています…");
  shell_.in_background([this, at_start, server = jarl_server] {
    std::string failure;
    JarlDates dates;
    try {
      dates = jarl_dates(server);
    } catch (const Error& error) {
      failure = error.what();
    }
    return Shell::Finish([this, at_start, dates, failure] {
      if (at_start) {
        controls.lblNotes.text = failure.empty()
                                     ? news_of_lists(dates.dates, dates_of_our_lists(settings_))
                                     : "JARL のリストの更新日付けを調べられませんでした";
      } else {
        end_waiting();
        const auto ours = dates_of_our_lists(settings_);
        tell(failure.empty() ? Shell::Icon::kInformation : Shell::Icon::kCritical,
             "JCC , JCG  , 区リスト",
             failure.empty() ? list_dates_text(dates, ours) + plain_http_text(dates.plain_http)
                             : failure);
      }
      shell_.mirror();
    });
  });
}

void MainWindow::download_jarl() {
  begin_waiting("JARL のリストを取得しています…");
  shell_.in_background([this, server = jarl_server] {
    std::string failure;
    JarlLists lists;
    try {
      lists = fetch_jarl_lists(server);
    } catch (const IncompleteLists& error) {
      failure = std::string(error.what()) + kMisprintNote;
    } catch (const Error& error) {
      failure = error.what();
    }
    return Shell::Finish([this, lists = std::move(lists), failure]() mutable {
      end_waiting();
      try {
        if (!failure.empty()) throw Error(failure);
        keep_jarl_lists(lists, folder_, settings_);
        save_settings();
        std::string text;
        for (std::size_t i = 0; i < kListFiles.size(); ++i) {
          text += std::string(kListFiles[i]) + ": " + lists.dates[i] + "\n";
        }
        JccMaster before;
        before.load(file_in(folder_, "JCC_JCG.mas"));
        const JccChanges changes = compare_jcc(before.places(), lists.build.places);
        tell(Shell::Icon::kInformation, "JCC , JCG  , 区リスト",
             text + jcc_text({lists.build, changes, {}}) + plain_http_text(lists.plain_http) +
                 "\n取得しました。「JCC , JCG , 区リストの作成」で変換に使えるようになります。");
      } catch (const Error& error) {
        tell(Shell::Icon::kCritical, "JCC , JCG  , 区リスト",
             std::string(error.what()) +
                 "\n\n今のリストはそのままです。ネットワークを確かめて、後でもう一度取得して下さい"
                 "。");
      }
      shell_.mirror();
    });
  });
}

bool MainWindow::replace_anyhow(const std::string& title, const std::string& refusal) {
  return shell_.ask({title, refusal + "。\n書き換えますか?", {"書き換える"}}).has_value();
}

void MainWindow::make_jcc_master() {
  const char* const title = "JCC , JCG , 区リストの作成";
  const auto file = file_in(folder_, "JCC_JCG.mas");
  std::error_code error;
  for (const std::string_view list : kListFiles) {
    if (fs::exists(file_in(folder_, list), error)) continue;
    throw FileError(folder_,
                    std::string(list) +
                        " がありません。先に「JARL よりJCC , JCG  , 区リストの取得」をして下さい");
  }
  JccRenewal renewal = renew_jcc_master(folder_, file, OnLoss::kRefuse, keep_rule());
  if (!renewal.refusal.empty()) {
    if (!replace_anyhow(title, renewal.refusal)) return;
    renewal = renew_jcc_master(folder_, file, OnLoss::kReplace, keep_rule());
  }
  place_tables_.reset();  // loaded anew by the next conversion
  tell(Shell::Icon::kInformation, title, jcc_text(renewal));
}

void MainWindow::make_dxcc_file() {
  const auto file = shell_.choose_file({"cty.dat を開く", "cty.dat", {"*.dat"}});
  if (!file) return;
  const char* const title = "dxcc_hl.dat の作成";
  const auto output = file_in(folder_, "dxcc_hl.dat");
  DxccRenewal renewal = renew_dxcc_file(*file, folder_, output, OnLoss::kRefuse, keep_rule());
  if (!renewal.refusal.empty()) {
    if (!replace_anyhow(title, renewal.refusal)) return;
    renewal = renew_dxcc_file(*file, folder_, output, OnLoss::kReplace, keep_rule());
  }
  call_tables_.reset();
  tell(Shell::Icon::kInformation, title, dxcc_text(renewal.built));
}

void MainWindow::learn_codes_from_log() {
  const auto file = shell_.choose_file(
      {"Code を登録する Hamlog の CSV を開く", "Hamlog の CSV (*.csv)", {"*.csv", "loglist.txt"}});
  if (!file) return;
  const CodesLearned learned = learn_codes(*file, call_tables().calls, folder_);
  const std::string text = learned_text(learned);  // names entities of the call tables
  call_tables_.reset();
  place_tables_.reset();
  tell(Shell::Icon::kInformation, "Hamlog の Code", text);
}

}  // namespace tobarine
