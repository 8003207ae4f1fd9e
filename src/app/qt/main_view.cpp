#include "app/qt/main_view.h"

#include <QAbstractButton>
#include <QDragEnterEvent>
#include <QFileInfo>
#include <QKeyEvent>
#include <QLayout>
#include <QLineEdit>
#include <QMenuBar>
#include <QMimeData>
#include <QSettings>

#include "app/qt/mirror.h"
#include "editors/qt/plain_text.h"
#include "editors/qt/window_size.h"
#include "text/strings.h"

namespace tobarine {
namespace {

constexpr int kMostRecentFiles = 8;

QString qstring(const std::string& text) {
  return QString::fromStdString(text);
}

std::filesystem::path path_of(const QString& file) {
  return {file.toStdU16String()};
}

QChar access_key(const QString& name, const Control& control) {
  if (name == "cmdH2L") return contains(control.text, "H") ? 'H' : 'Z';
  if (name == "cmdeqsl") return 'f';
  if (name == "cmdL2H") return 'L';
  return {};
}

}  // namespace

MainView::MainView() {
  setObjectName("frmMain");
  setAcceptDrops(true);
  add_menus();
  add_toolbar();
  build();
  find_controls();
  setMaximumSize(kMostWidth / kTwipsPerPixel, kMostHeight / kTwipsPerPixel);
  restore_place();
}

void MainView::find_controls() {
  const MainControls names;
  for_each_control(names, [this](const std::string& name, const Control&) {
    auto* const object = findChild<QObject*>(qstring(name));
    Q_ASSERT(object != nullptr);
    controls_[qstring(name)] = object;
  });
}

void MainView::connect_commands(MainWindow& commands) {
  commands_ = &commands;
  bands_ = new GridView(commands.bands, "Text1", {33, 67, 67, 99, 55}, bands_place_);
  bands_->setObjectName("MSFlexGrid1");
  bands_->setAccessibleName("BAND 変換テーブル");
  bands_place_->layout()->addWidget(bands_);
  modes_ = new GridView(commands.modes, "Text4", {33, 67, 67}, modes_place_);
  modes_->setObjectName("MSFlexGrid2");
  modes_->setAccessibleName("MODE 変換テーブル");
  modes_place_->layout()->addWidget(modes_);
  connect_options();
  show_recent_files();
}

void MainView::connect_options() {
  const auto on_click = [this](const QString& name, auto function) {
    auto* const button = qobject_cast<QAbstractButton*>(controls_[name]);
    connect(button, &QAbstractButton::clicked, this, function);
  };
  for (std::size_t i = 1; i < commands_->controls.Check.size(); ++i) {
    on_click(QString("Check%1").arg(i), [this, i](bool checked) { commands_->check(i, checked); });
  }
  for (std::size_t i = 0; i < 4; ++i) {
    on_click(QString("Option1_%1").arg(i), [this, i] { commands_->select_option1(i); });
  }
  for (std::size_t i = 0; i < 3; ++i) {
    on_click(QString("Option2_%1").arg(i), [this, i] { commands_->select_option2(i); });
  }
  for (std::size_t i = 0; i < 2; ++i) {
    on_click(QString("Option3_%1").arg(i), [this, i] { commands_->select_option3(i); });
  }
  const auto on_edit = [this](const char* name, auto function) {
    auto* const edit = qobject_cast<QLineEdit*>(controls_[name]);
    connect(edit, &QLineEdit::textEdited, this,
            [function](const QString& text) { function(text.toStdString()); });
  };
  on_edit("txtWas", [this](const std::string& text) { commands_->edit_was(text); });
  on_edit("txtYYYY", [this](const std::string& text) { commands_->edit_year(text); });
}

void MainView::mirror() {
  const MainControls& controls = commands_->controls;
  setWindowTitle(qstring(controls.title));
  if (commands_->running()) suspend();
  for_each_control(controls, [this](const std::string& name, const Control& control) {
    const QString key = qstring(name);
    mirror_control(*controls_[key], control, access_key(key, control));
  });
  bands_->mirror();
  modes_->mirror();
  if (!commands_->running()) resume();
  mirror_progress();
  if (commands_->accepted()) {
    remember_recent_file(QString::fromStdU16String(commands_->input().u16string()), true);
    if (focusWidget() == centralWidget()) offer_conversion();
  }
}

// The conversion that can be done next has the focus, unless the user has put it elsewhere.
void MainView::offer_conversion() {
  for (const char* const name : {"cmdH2L", "cmdL2H"}) {
    auto* const button = qobject_cast<QWidget*>(controls_[name]);
    if (button->isEnabled()) button->setFocus();
  }
}

// What does nothing while a run goes on looks so. The focus comes back afterwards.
void MainView::suspend() {
  if (!idle_[0]->isEnabled()) return;
  focus_before_run_ = focusWidget();
  for (QWidget* const widget : idle_) widget->setEnabled(false);
}

void MainView::resume() {
  if (idle_[0]->isEnabled()) return;
  for (QWidget* const widget : idle_) widget->setEnabled(true);
  if (focus_before_run_ != nullptr) focus_before_run_->setFocus();
}

void MainView::widen_grids() {
  bands_->widen_columns();
  modes_->widen_columns();
}

void MainView::mirror_progress() {
  constexpr int kSteps = 1000;
  const double done = commands_->controls.progress;
  progress_->setRange(0, done == kBusy ? 0 : kSteps);
  progress_->setTextVisible(commands_->running());
  if (done != kBusy) progress_->setValue(static_cast<int>(done * kSteps));
}

// Another theme has other colours for the same texts, once all widgets know of it.
void MainView::changeEvent(QEvent* event) {
  QMainWindow::changeEvent(event);
  if (event->type() != QEvent::PaletteChange || commands_ == nullptr) return;
  QMetaObject::invokeMethod(
      this, [this] { mirror(); }, Qt::QueuedConnection);
}

void MainView::closeEvent(QCloseEvent* event) {
  event->ignore();
  if (wants_to_quit) wants_to_quit();
}

void MainView::dragEnterEvent(QDragEnterEvent* event) {
  if (event->mimeData()->hasUrls()) event->acceptProposedAction();
}

void MainView::dropEvent(QDropEvent* event) {
  for (const QUrl& url : event->mimeData()->urls()) {
    if (!url.isLocalFile()) continue;
    commands_->open_file(path_of(url.toLocalFile()));
    event->acceptProposedAction();
    return;
  }
}

void MainView::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape && wants_to_stop) {
    wants_to_stop();
  } else {
    QMainWindow::keyPressEvent(event);
  }
}

void MainView::resizeEvent(QResizeEvent* event) {
  QMainWindow::resizeEvent(event);
  if (commands_ != nullptr) commands_->resize(width() * kTwipsPerPixel, height() * kTwipsPerPixel);
}

// The window's place is the platform's business, not the settings file's.
void MainView::restore_place() {
  const QSettings platform("Tobarine", "Tobarine");
  resize_within_screen(*this, maximumSize());
  restoreGeometry(platform.value("main/place").toByteArray());
}

void MainView::remember_place() const {
  QSettings("Tobarine", "Tobarine").setValue("main/place", saveGeometry());
}

// A file that turns out to be no log, or to be gone, leaves the list.
void MainView::remember_recent_file(const QString& file, bool usable) {
  QSettings platform("Tobarine", "Tobarine");
  QStringList files = platform.value("recent").toStringList();
  if (usable && !files.isEmpty() && files[0] == file) return;
  files.removeAll(file);
  if (usable) files.prepend(file);
  platform.setValue("recent", QStringList(files.mid(0, kMostRecentFiles)));
  show_recent_files();
}

void MainView::open_recent_file(const QString& file) {
  commands_->open_file(path_of(file));
  const bool refused = commands_->input() == path_of(file) && !commands_->accepted();
  if (refused || !QFileInfo::exists(file)) remember_recent_file(file, false);
}

void MainView::show_recent_files() {
  recent_->clear();
  const QStringList files = QSettings("Tobarine", "Tobarine").value("recent").toStringList();
  recent_->setEnabled(!files.isEmpty());
  for (const QString& file : files) {
    const QFileInfo info(file);
    QString caption = shown_line((info.fileName() + "    " + info.path()).toStdString());
    recent_->addAction(caption.replace('&', "&&"), this, [this, file] { open_recent_file(file); });
  }
}

}  // namespace tobarine
