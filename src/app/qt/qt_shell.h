// The windows around the commands: dialogs, message boxes, the other windows, and what runs beside.
#pragma once

#include <QElapsedTimer>
#include <QPointer>
#include <memory>
#include <vector>

#include "app/main_window.h"
#include "app/qt/main_view.h"
#include "app/qt/report_view.h"
#include "app/qt/viewer_view.h"
#include "app/qt/zlog_view.h"
#include "app/shell.h"
#include "app/zlog_window.h"
#include "editors/qt/file_editor_view.h"

namespace tobarine {

class QtShell : public Shell {
 public:
  QtShell();
  ~QtShell() override;

  // Makes the windows for these commands and fills the main one.
  void show(MainWindow& commands);

  MainView& view() { return *view_; }
  ZlogView* zlog_view() { return zlog_view_.get(); }

  std::optional<std::filesystem::path> choose_file(const FileQuestion& question) override;
  std::optional<std::filesystem::path> choose_output(
      const FileQuestion& question, const std::filesystem::path& suggested) override;
  std::optional<std::size_t> ask(const Choice& choice) override;
  void show_message(Icon icon, const MessageBox& message) override;
  std::tm now() override;
  void mirror() override;
  bool keep_going() override;
  void open_viewer(const std::filesystem::path& file, std::size_t line) override;
  void open_editor(const std::filesystem::path& file) override;
  void open_report() override;
  void open_zlog_window() override;
  void in_background(std::function<Finish()> work) override;
  void quit() override;

 private:
  // Shared with work that may outlive the shell.
  struct Alive;

  QWidget& window_in_use();
  void told_when_failing(const std::function<void()>& action);
  void want_to_quit();

  std::unique_ptr<MainView> view_;
  MainWindow* commands_ = nullptr;
  std::unique_ptr<ZlogWindow> zlog_;
  std::unique_ptr<ZlogView> zlog_view_;
  std::vector<QPointer<FileEditorView>> editors_;
  // Each may be closed before the shell.
  std::vector<QPointer<ViewerView>> viewers_;
  QPointer<ReportView> report_;
  std::shared_ptr<Alive> alive_;
  QElapsedTimer since_events_;
  bool stop_ = false;  // the user wants the run to stop
};

}  // namespace tobarine
