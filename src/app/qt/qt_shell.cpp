#include "app/qt/qt_shell.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>
#include <mutex>
#include <thread>
#include <utility>

#include "app/local_time.h"
#include "editors/qt/plain_text.h"
#include "editors/qt/window_size.h"
#include "text/error.h"

namespace tobarine {
namespace {

QString qstring(const std::string& text) {
  return QString::fromStdString(text);
}

QString file_filter(const FileQuestion& question) {
  QStringList patterns;
  for (const std::string& pattern : question.patterns) {
    patterns << qstring(pattern);
    if (qstring(pattern).toUpper() != qstring(pattern)) patterns << qstring(pattern).toUpper();
  }
  // The description may hold parentheses of its own; the patterns are what stands in the last ones.
  return qstring(question.description).replace('(', "（").replace(')', "）") + " (" +
         patterns.join(' ') + ");;すべてのファイル (*)";
}

std::optional<std::filesystem::path> chosen_path(const QString& chosen) {
  if (chosen.isEmpty()) return std::nullopt;
  return std::filesystem::path(chosen.toStdU16String());
}

// A text too long for a message box.
void show_long_text(const QString& title, const QString& text) {
  QDialog dialog(QApplication::activeWindow());
  dialog.setObjectName("dlgText");
  dialog.setWindowTitle(title);
  auto* const view = new QPlainTextEdit(text, &dialog);
  view->setReadOnly(true);
  view->setLineWrapMode(QPlainTextEdit::NoWrap);
  auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Ok, &dialog);
  QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
  auto* const layout = new QVBoxLayout(&dialog);
  layout->addWidget(view);
  layout->addWidget(buttons);
  dialog.resize(640, 420);
  dialog.exec();
}

}  // namespace

struct QtShell::Alive {
  std::mutex mutex;
  bool yes = true;
};

QtShell::QtShell() : view_(std::make_unique<MainView>()), alive_(std::make_shared<Alive>()) {
  view_->wants_to_quit = [this] { want_to_quit(); };
  view_->wants_to_stop = [this] { stop_ = true; };
}

QtShell::~QtShell() {
  {
    const std::lock_guard lock(alive_->mutex);
    alive_->yes = false;
  }
  delete report_;
  for (const auto& viewer : viewers_) delete viewer;
  for (const auto& editor : editors_) delete editor;
}

QWidget& QtShell::window_in_use() {
  QWidget* const active = QApplication::activeWindow();
  return active == nullptr || active->isModal() ? *view_ : *active;
}

void QtShell::show(MainWindow& commands) {
  commands_ = &commands;
  view_->connect_commands(commands);
  commands.load();
  view_->widen_grids();
  view_->show();
}

std::optional<std::filesystem::path> QtShell::choose_file(const FileQuestion& question) {
  const QString folder =
      commands_->input().empty()
          ? QString()
          : QString::fromStdU16String(commands_->input().parent_path().u16string());
  return chosen_path(QFileDialog::getOpenFileName(
      QApplication::activeWindow(), qstring(question.title), folder, file_filter(question)));
}

std::optional<std::filesystem::path> QtShell::choose_output(
    const FileQuestion& question, const std::filesystem::path& suggested) {
  // What becomes of a file that is there is asked when it is to be written.
  return chosen_path(QFileDialog::getSaveFileName(
      QApplication::activeWindow(), qstring(question.title),
      QString::fromStdU16String(suggested.u16string()), file_filter(question), nullptr,
      QFileDialog::DontConfirmOverwrite));
}

std::optional<std::size_t> QtShell::ask(const Choice& choice) {
  const auto box = message_box(QApplication::activeWindow(), QMessageBox::Question, choice.title,
                               choice.text, QMessageBox::NoButton);
  std::vector<QAbstractButton*> buttons;
  for (const std::string& answer : choice.answers) {
    buttons.push_back(box->addButton(qstring(answer), QMessageBox::ActionRole));
  }
  box->setEscapeButton(box->addButton("やめる", QMessageBox::RejectRole));
  box->exec();
  const auto clicked = std::ranges::find(buttons, box->clickedButton());
  if (clicked == buttons.end()) return std::nullopt;
  return static_cast<std::size_t>(clicked - buttons.begin());
}

void QtShell::show_message(Icon icon, const MessageBox& message) {
  constexpr int kMostLines = 16;
  if (std::ranges::count(message.text, '\n') > kMostLines) {
    show_long_text(shown_lines(message.title), shown_lines(message.text));
  } else {
    const auto of = icon == Icon::kCritical ? QMessageBox::Critical : QMessageBox::Information;
    message_box(QApplication::activeWindow(), of, message.title, message.text)->exec();
  }
}

std::tm QtShell::now() {
  return local_time();
}

void QtShell::mirror() {
  stop_ = stop_ && commands_->running();
  view_->mirror();
  if (!zlog_view_) return;
  zlog_->show_settings();  // the main window may have changed them
  zlog_view_->mirror();
}

bool QtShell::keep_going() {
  constexpr qint64 kBetween = 30;  // milliseconds: smooth to the eye, no burden to the run
  if (since_events_.isValid() && since_events_.elapsed() < kBetween) return !stop_;
  since_events_.start();
  view_->mirror_progress();
  if (zlog_view_) zlog_view_->mirror_progress();
  QApplication::processEvents();
  return !std::exchange(stop_, false);
}

namespace {

bool is_same_file(const std::filesystem::path& a, const std::filesystem::path& b) {
  std::error_code error;
  return a == b || std::filesystem::equivalent(a, b, error);
}

// The window that shows the file already, above others now; windows that are closed are forgotten.
template <typename Window>
Window* raised(std::vector<QPointer<Window>>& windows, const std::filesystem::path& file) {
  std::erase_if(windows, [](const auto& window) { return window == nullptr; });
  for (const auto& window : windows) {
    if (!is_same_file(window->file(), file)) continue;
    window->show();
    window->raise();
    return window;
  }
  return nullptr;
}

}  // namespace

// What is asked for in one of the other windows.
void QtShell::told_when_failing(const std::function<void()>& action) {
  try {
    action();
  } catch (const Error& error) {
    show_message(Icon::kCritical, {"Tobarine", error.what()});
  }
}

void QtShell::open_viewer(const std::filesystem::path& file, std::size_t line) {
  QWidget& beside = window_in_use();
  ViewerView* viewer = raised(viewers_, file);
  if (viewer != nullptr) {
    viewer->reload();
  } else {
    viewer = new ViewerView(file);
    viewer->setAttribute(Qt::WA_DeleteOnClose);
    viewers_.emplace_back(viewer);
    stand_beside(*viewer, beside);
    viewer->setAttribute(Qt::WA_ShowWithoutActivating, line > 0);
    viewer->show();
  }
  // For a line of the report the user stays in the report, to go on to the next.
  if (line == 0) viewer->activateWindow();
  viewer->go_to_line(line);
}

void QtShell::open_editor(const std::filesystem::path& file) {
  if (auto* const editor = raised(editors_, file)) {
    editor->activateWindow();
    return;
  }
  auto* const editor = new FileEditorView(file);
  editor->setAttribute(Qt::WA_DeleteOnClose);
  editor->wants_to_open = [this](const std::filesystem::path& dropped) {
    told_when_failing([&] { open_editor(dropped); });
  };
  editors_.emplace_back(editor);
  editor->show();
}

void QtShell::open_report() {
  delete report_;  // of an earlier run
  report_ = new ReportView(commands_->report(), commands_->input(),
                           [this](const std::filesystem::path& file, std::size_t line) {
                             told_when_failing([&] { open_viewer(file, line); });
                           });
  report_->setAttribute(Qt::WA_DeleteOnClose);
  report_->show();
}

void QtShell::open_zlog_window() {
  if (!zlog_) {
    zlog_ = std::make_unique<ZlogWindow>(*commands_, *this);
    zlog_view_ = std::make_unique<ZlogView>(*zlog_);
    zlog_view_->wants_to_stop = [this] { stop_ = true; };
  }
  mirror();
  zlog_view_->show();
  zlog_view_->raise();
  zlog_view_->activateWindow();
}

void QtShell::in_background(std::function<Finish()> work) {
  std::thread([work = std::move(work), alive = alive_] {
    Finish finish = work();
    const std::lock_guard lock(alive->mutex);
    if (!alive->yes) return;
    QMetaObject::invokeMethod(
        qApp,
        [finish = std::move(finish), alive] {
          if (alive->yes) finish();
        },
        Qt::QueuedConnection);
  }).detach();
}

void QtShell::want_to_quit() {
  if (commands_->running()) {
    stop_ = true;
    return;
  }
  commands_->command("cmdEnd");
}

void QtShell::quit() {
  for (const QPointer<FileEditorView>& editor : editors_) {
    if (editor != nullptr && !editor->may_close()) return;
  }
  view_->remember_place();
  QApplication::exit();
}

}  // namespace tobarine
