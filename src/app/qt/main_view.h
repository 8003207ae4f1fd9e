// The main window: draws app/main_window.h and hands it what the user does.
#pragma once

#include <QLabel>
#include <QMainWindow>
#include <QMenu>
#include <QPointer>
#include <QProgressBar>
#include <filesystem>
#include <functional>
#include <map>

#include "app/main_window.h"
#include "editors/qt/grid_view.h"

class QBoxLayout;
class QGridLayout;
class QGroupBox;

namespace tobarine {

class MainView : public QMainWindow {
 public:
  // The window's commands must live as long; connect_commands() tells which they are.
  MainView();

  void connect_commands(MainWindow& commands);
  void mirror();
  void mirror_progress();
  void widen_grids();  // once they are filled

  // Asked when the user wants to close the window; the shell ends the program in its own way.
  std::function<void()> wants_to_quit;
  std::function<void()> wants_to_stop;  // a run

  void remember_place() const;

 protected:
  void changeEvent(QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void add_menus();
  void add_toolbar();
  void build();
  QWidget* build_top();
  QWidget* build_result();
  QWidget* build_progress();
  QWidget* build_options();
  QWidget* build_left_options();
  QWidget* build_right_options();
  QWidget* build_grids();
  QGroupBox* frame(const char* name, QBoxLayout* layout);
  template <typename Widget>
  Widget* add(const QString& name, QWidget* parent = nullptr);
  void connect_options();
  void find_controls();
  void offer_conversion();
  void suspend();
  void resume();
  void open_recent_file(const QString& file);
  void remember_recent_file(const QString& file, bool usable);
  void show_recent_files();
  void restore_place();

  MainWindow* commands_ = nullptr;
  std::map<QString, QObject*> controls_;  // by the names of for_each_control()
  QProgressBar* progress_ = nullptr;
  QMenu* recent_ = nullptr;
  QList<QWidget*> idle_;  // what can be used only while nothing runs
  QPointer<QWidget> focus_before_run_;
  QWidget* bands_place_ = nullptr;
  QWidget* modes_place_ = nullptr;
  GridView* bands_ = nullptr;
  GridView* modes_ = nullptr;
};

}  // namespace tobarine
