#include "app/qt/zlog_view.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>
#include <QDragEnterEvent>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QMimeData>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QVBoxLayout>

#include "app/qt/mirror.h"
#include "editors/qt/window_size.h"

namespace tobarine {
namespace {

// The check boxes whose texts also go into the CSV's remarks, beside their combo boxes.
struct RemarksChoice {
  int check;
  const char* combo;
};
constexpr RemarksChoice kRemarksChoices[] = {
    {10, "Combo10"}, {11, "Combo11"}, {12, "Combo12"}, {13, "Combo13"}};

QGroupBox* framed(const QString& title, QLayout* layout) {
  auto* const box = new QGroupBox(title);
  layout->setContentsMargins(10, 1, 10, 3);
  layout->setSpacing(4);
  box->setLayout(layout);
  return box;
}

}  // namespace

ZlogView::ZlogView(ZlogWindow& commands)
    : commands_(commands),
      progress_(new QProgressBar(this)),
      stop_(new QPushButton("中止 (Esc)", this)),
      notes_(new QPlainTextEdit(this)) {
  setObjectName("frmADIF2zLog");
  setWindowTitle("ADIF to zLog ALL");
  setAcceptDrops(true);
  add_menus();
  build();
  for_each_zlog_control(commands_.controls, [this](const std::string& name, const Control&) {
    const QString key = QString::fromStdString(name);
    controls_[key] = findChild<QObject*>(key);
  });
  connect_options();
  resize_within_screen(*this, {660, 600});
}

template <typename Widget>
Widget* ZlogView::add(const QString& name) {
  auto* const widget = new Widget(this);
  widget->setObjectName(name);
  widget->setAcceptDrops(false);  // a file that is dropped anywhere is opened by the window
  return widget;
}

void ZlogView::add_menus() {
  const auto entry = [this](const char* name, const Control& control, auto action) {
    QAction* const menu = menuBar()->addAction(shown_text(control), this, action);
    menu->setObjectName(name);
  };
  entry("mnuCSV", commands_.controls.mnuCSV, [this] { commands_.edit_csv(); });
  entry("mnuALL", commands_.controls.mnuALL, [this] { commands_.edit_all(); });
  entry("mnuBack", commands_.controls.mnuBack, [this] { close(); });
}

QWidget* ZlogView::build_options() {
  auto* const time = new QHBoxLayout;
  for (int i = 0; i < 3; ++i) time->addWidget(add<QRadioButton>(QString("Option2_%1").arg(i)));
  time->addWidget(add<QCheckBox>("Check1"));
  time->addStretch();

  auto* const numbers = new QGridLayout;
  auto* const sent = add<QLineEdit>("Text7");
  sent->setAccessibleName("送信番号");
  sent->setMaximumWidth(120);
  auto* const label = new QLabel("送信番号 (STX が無い交信)");
  label->setBuddy(sent);
  numbers->addWidget(label, 0, 0);
  numbers->addWidget(sent, 0, 1);
  numbers->addWidget(add<QCheckBox>("Check7"), 0, 2);
  numbers->addWidget(add<QCheckBox>("Check2"), 1, 0, 1, 3);
  numbers->setColumnStretch(2, 1);

  auto* const texts = new QGridLayout;
  int row = 0;
  texts->addWidget(add<QCheckBox>("Check4"), row++, 0);
  for (const RemarksChoice& choice : kRemarksChoices) {
    texts->addWidget(add<QCheckBox>(QString("Check%1").arg(choice.check)), row, 0);
    texts->addWidget(new QLabel("CSV の Rmks"), row, 1);
    auto* const combo = add<QComboBox>(choice.combo);
    combo->setAccessibleName("転記先の Rmks");
    combo->addItems({"1", "2"});
    texts->addWidget(combo, row++, 2);
  }
  texts->setColumnStretch(3, 1);
  texts->addWidget(add<QCheckBox>("Check8"), 0, 4);
  texts->addWidget(add<QCheckBox>("Check5"), 1, 4);

  auto* const all = new QVBoxLayout;
  all->setContentsMargins(0, 0, 0, 0);
  all->setSpacing(4);
  all->addWidget(framed("ＪＳＴ　， ＵＴＣ　変換", time));
  all->addWidget(framed("コンテストナンバー", numbers));
  all->addWidget(framed("転記", texts));
  all->addStretch();
  auto* const widget = new QWidget;
  widget->setLayout(all);
  return widget;
}

void ZlogView::build() {
  auto* const files = new QGridLayout;
  files->setContentsMargins(0, 0, 0, 0);
  const auto add_file = [&](int row, const char* caption, const char* file, const char* count) {
    files->addWidget(new QLabel(caption), row, 0);
    files->addWidget(add<PathLabel>(file), row, 1);
    files->addWidget(add<QLabel>(count), row, 3);
  };
  add_file(0, "入力:", "lblInFile", "lblIn");
  add_file(1, "出力:", "lblOutFile", "lblInfo");
  auto* const choose = add<QPushButton>("cmdOutput");
  choose->setAutoDefault(true);
  files->addWidget(choose, 1, 2);
  files->setColumnStretch(1, 1);
  progress_->setObjectName("ProgressBar1");
  progress_->setRange(0, 1000);
  progress_->setAlignment(Qt::AlignCenter);
  files->addWidget(progress_, 2, 0, 1, 3);
  stop_->setObjectName("cmdStop");
  stop_->setFocusPolicy(Qt::NoFocus);
  connect(stop_, &QPushButton::clicked, this, [this] { wants_to_stop(); });
  files->addWidget(stop_, 2, 3);
  auto* const choices = new QWidget;
  auto* const buttons = new QHBoxLayout(choices);
  buttons->setContentsMargins(0, 0, 0, 0);
  for (const char* name : {"cmdOpen", "cmdConvert"}) {
    auto* const button = add<QPushButton>(name);
    button->setMinimumHeight(36);
    button->setAutoDefault(true);  // Enter presses it
    buttons->addWidget(button);
  }
  auto* const message = add<QLabel>("lblMsg");
  message->setMinimumWidth(message->fontMetrics().horizontalAdvance("途中で止まりました"));
  auto* const actions = new QHBoxLayout;
  actions->addWidget(choices, 1);
  actions->addWidget(message);
  notes_->setObjectName("lblNotes");
  notes_->setAccessibleName("変換の報告");
  notes_->setReadOnly(true);
  notes_->setAcceptDrops(false);
  notes_->setPlaceholderText("変換の報告がここに出ます。");
  auto* const all = new QVBoxLayout;
  all->addLayout(files);
  all->addLayout(actions);
  auto* const scroll = new QScrollArea;  // for small screens
  scroll->setWidgetResizable(true);
  scroll->setFrameShape(QFrame::NoFrame);
  scroll->setFocusPolicy(Qt::NoFocus);
  scroll->setWidget(build_options());
  idle_ << choices << scroll << menuBar();
  all->addWidget(scroll, 2);
  notes_->setMinimumHeight(3 * notes_->fontMetrics().lineSpacing());
  all->addWidget(notes_, 1);
  auto* const content = new QWidget;
  content->setLayout(all);
  setCentralWidget(content);
}

void ZlogView::connect_options() {
  const auto on_click = [this](const QString& name, auto function) {
    connect(qobject_cast<QAbstractButton*>(controls_[name]), &QAbstractButton::clicked, this,
            function);
  };
  on_click("cmdOpen", [this] { commands_.open(); });
  on_click("cmdConvert", [this] { commands_.convert(); });
  on_click("cmdOutput", [this] { commands_.choose_output(); });
  for (const std::size_t i : kZlogChecks) {
    on_click(QString("Check%1").arg(i), [this, i](bool checked) { commands_.check(i, checked); });
  }
  for (std::size_t i = 0; i < 3; ++i) {
    on_click(QString("Option2_%1").arg(i), [this, i] { commands_.select_option2(i); });
  }
  for (std::size_t i = 0; i < kZlogCombos.size(); ++i) {
    const QString name = QString::fromUtf8(kZlogCombos[i].data());
    connect(qobject_cast<QComboBox*>(controls_[name]), &QComboBox::textActivated, this,
            [this, i](const QString& text) { commands_.choose_remarks(i, text.toStdString()); });
  }
  connect(qobject_cast<QLineEdit*>(controls_["Text7"]), &QLineEdit::textEdited, this,
          [this](const QString& text) { commands_.edit_sent_number(text.toStdString()); });
}

void ZlogView::mirror() {
  for_each_zlog_control(commands_.controls,
                        [this](const std::string& name, const Control& control) {
                          mirror_control(*controls_[QString::fromStdString(name)], control);
                        });
  if (const QString notes = shown_text(commands_.controls.lblNotes);
      notes_->toPlainText() != notes) {
    notes_->setPlainText(notes);
  }
  stop_->setEnabled(commands_.running());
  progress_->setTextVisible(commands_.running());
  for (QWidget* const widget : idle_) widget->setEnabled(!commands_.running());
  if (commands_.running()) qobject_cast<QWidget*>(controls_["cmdOutput"])->setEnabled(false);
  mirror_progress();
}

void ZlogView::mirror_progress() {
  progress_->setValue(static_cast<int>(commands_.controls.progress * progress_->maximum()));
}

void ZlogView::dragEnterEvent(QDragEnterEvent* event) {
  if (event->mimeData()->hasUrls()) event->acceptProposedAction();
}

void ZlogView::dropEvent(QDropEvent* event) {
  const QList<QUrl> urls = event->mimeData()->urls();
  if (urls.isEmpty() || !urls[0].isLocalFile()) return;
  commands_.open_file(std::filesystem::path(urls[0].toLocalFile().toStdU16String()));
  event->acceptProposedAction();
}

void ZlogView::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape && wants_to_stop) wants_to_stop();
  QMainWindow::keyPressEvent(event);
}

// A run goes on with its window.
void ZlogView::closeEvent(QCloseEvent* event) {
  if (!commands_.controls.cmdOpen.enabled) event->ignore();
}

}  // namespace tobarine
