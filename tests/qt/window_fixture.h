// What the tests of the real windows share: a program folder, a shell that answers by itself, and
// the windows over them, without a screen.
#pragma once

#include <QApplication>
#include <QDropEvent>
#include <QMessageBox>
#include <QMimeData>
#include <QTest>
#include <QTimer>
#include <filesystem>
#include <gtest/gtest.h>
#include <optional>
#include <utility>

#include "app/qt/qt_shell.h"
#include "paths.h"
#include "test_folder.h"

namespace tobarine {

namespace fs = std::filesystem;

// The shell of the program, but for the dialogs that would wait for an answer.
class ScriptedShell : public QtShell {
 public:
  std::optional<fs::path> choose_file(const FileQuestion& /*question*/) override {
    return std::exchange(chosen, std::nullopt);
  }
  std::optional<fs::path> choose_output(const FileQuestion& question,
                                        const fs::path& /*suggested*/) override {
    return choose_file(question);
  }
  void show_message(Icon /*icon*/, const MessageBox& message) override {
    messages.push_back(message.text);
    shown_with_message = view().findChild<QLabel*>("lblMsg")->text();
  }
  std::optional<fs::path> chosen;
  std::vector<std::string> messages;
  QString shown_with_message;  // in the main window
};

// As the platform does it: the widget under the mouse is asked first, then those that hold it.
inline void drop_file(const fs::path& file, QWidget& on) {
  QMimeData data;
  data.setUrls({QUrl::fromLocalFile(QString::fromStdString(file.string()))});
  QDragEnterEvent enter({2, 2}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
  QDropEvent drop({2, 2}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(&on, &enter);
  QApplication::sendEvent(&on, &drop);
}

inline QString plain(QString text) {
  return text.remove('&');
}

// Answers the next message box by the button.
inline void answer_with(QMessageBox::StandardButton button) {
  QTimer::singleShot(0, [button] {
    auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    ASSERT_NE(box, nullptr);
    box->button(button)->click();
  });
}

class WindowTest : public ::testing::Test {
 protected:
  WindowTest() {
    fs::copy(delivered_folder(), folder_ / "home");
    start();
  }
  void start() {
    shell_ = std::make_unique<ScriptedShell>();
    commands_ = std::make_unique<MainWindow>(start_up({folder_ / "home", "", shell_->now()}),
                                             folder_ / "home", *shell_);
    shell_->show(*commands_);
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&shell_->view()));
  }
  fs::path sample(const std::string& name) {
    fs::copy(fs::path(samples_folder()) / name, folder_ / name,
             fs::copy_options::overwrite_existing);
    return folder_ / name;
  }
  template <typename Widget>
  Widget* find(const QString& name) {
    auto* const found = shell_->view().findChild<Widget*>(name);
    EXPECT_NE(found, nullptr) << name.toStdString();
    return found;
  }
  template <typename Window>
  Window* other_window(const QString& name) {
    for (QWidget* const widget : QApplication::topLevelWidgets()) {
      if (widget->objectName() == name && widget->isVisible()) return static_cast<Window*>(widget);
    }
    ADD_FAILURE() << "no window " << name.toStdString();
    return nullptr;
  }
  void press(const char* keys) { QTest::keySequence(&shell_->view(), QKeySequence(keys)); }

  TestFolder folder_;
  std::unique_ptr<MainWindow> commands_;
  std::unique_ptr<ScriptedShell> shell_;
};

}  // namespace tobarine
