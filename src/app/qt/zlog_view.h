// The ADIF-to-zLog window: draws app/zlog_window.h and hands it what the user does.
#pragma once

#include <QMainWindow>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <functional>
#include <map>

#include "app/zlog_window.h"

namespace tobarine {

class ZlogView : public QMainWindow {
 public:
  explicit ZlogView(ZlogWindow& commands);

  void mirror();
  void mirror_progress();
  std::function<void()> wants_to_stop;  // a run

 protected:
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void closeEvent(QCloseEvent* event) override;

 private:
  void add_menus();
  void build();
  QWidget* build_options();
  void connect_options();
  template <typename Widget>
  Widget* add(const QString& name);

  ZlogWindow& commands_;
  std::map<QString, QObject*> controls_;
  QProgressBar* progress_;
  QPushButton* stop_;
  QList<QWidget*> idle_;  // what can be used only while nothing runs
  QPlainTextEdit* notes_;
};

}  // namespace tobarine
