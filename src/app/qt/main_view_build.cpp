// What the main window consists of, and where it stands.
#include <QBoxLayout>
#include <QCheckBox>
#include <QGroupBox>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QToolBar>

#include "app/qt/main_view.h"
#include "app/qt/mirror.h"

namespace tobarine {
namespace {

constexpr int kGap = 6;

QVBoxLayout* column(int gap = kGap) {
  auto* const layout = new QVBoxLayout;
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(gap);
  return layout;
}

QHBoxLayout* row() {
  auto* const layout = new QHBoxLayout;
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(2 * kGap);
  return layout;
}

QLabel* note(const QString& text) {
  auto* const label = new QLabel(text);
  QFont font = label->font();
  font.setPointSizeF(font.pointSizeF() * 0.9);
  label->setFont(font);
  return label;
}

// Keys that work wherever the focus is.
struct Shortcut {
  std::string_view name;
  const char* keys;
};
constexpr Shortcut kShortcuts[] = {
    {"mnuOpen_hdb", "Ctrl+B"},      {"mnuOpen_csv", "Ctrl+O"},      {"mnuOpen_adi", "Ctrl+D"},
    {"mnuOpen_zlog_all", "Ctrl+T"}, {"mnuOpen_zlog_zlo", "Ctrl+Z"}, {"mnuDisp_in", "Ctrl+I"},
    {"mnuDisp_out", "Ctrl+U"},      {"mnuDisp_report", "Ctrl+R"},   {"mnuHelp", "F1"},
};

}  // namespace

template <typename Widget>
Widget* MainView::add(const QString& name, QWidget* parent) {
  auto* const widget = new Widget(parent);
  widget->setObjectName(name);
  widget->setAcceptDrops(false);  // a file that is dropped anywhere is opened by the window
  return widget;
}

void MainView::add_menus() {
  std::map<QString, QMenu*> menus;
  const auto entries = menu_entries();
  for (const MenuEntry& entry : entries) {
    const QString name = QString::fromUtf8(entry.name.data(), static_cast<int>(entry.name.size()));
    QString caption =
        QString::fromUtf8(entry.caption.data(), static_cast<int>(entry.caption.size()));
    if (entry.name == "mnuTool") caption.replace("Tool", "&Tool");
    QMenu* const parent =
        menus[QString::fromUtf8(entry.parent.data(), static_cast<int>(entry.parent.size()))];
    const bool has_entries =
        std::ranges::find(entries, entry.name, &MenuEntry::parent) != entries.end();
    if (has_entries) {
      QMenu* const menu =
          parent == nullptr ? menuBar()->addMenu(caption) : parent->addMenu(caption);
      menus[name] = menu;
      menu->menuAction()->setObjectName(name);
      continue;
    }
    QAction* const action =
        parent == nullptr ? menuBar()->addAction(caption) : parent->addAction(caption);
    action->setObjectName(name);
    for (const Shortcut& shortcut : kShortcuts) {
      if (shortcut.name == entry.name) action->setShortcut(QKeySequence(shortcut.keys));
    }
    connect(action, &QAction::triggered, this, [this, name] {
      if (commands_ != nullptr) commands_->command(name.toStdString());
    });
  }
  recent_ = menus["mnuFile_H2L"]->addMenu("最近使ったファイル");
  recent_->setObjectName("mnuRecent");
}

void MainView::add_toolbar() {
  auto* const bar = new QToolBar("ツールバー", this);
  bar->setObjectName("Toolbar1");
  bar->setMovable(false);
  bar->setToolButtonStyle(Qt::ToolButtonTextOnly);
  bar->setContextMenuPolicy(Qt::PreventContextMenu);
  for (const ToolButton& button : kToolButtons) {
    const QString key = QString::fromUtf8(button.key.data(), static_cast<int>(button.key.size()));
    QAction* const action = bar->addAction(key);
    action->setObjectName(key);
    connect(action, &QAction::triggered, this, [this, key] {
      if (commands_ != nullptr) commands_->command(key.toStdString());
    });
    if (button.key == "開 adi" || button.key == "表示 o" || button.key == "変換 L2H") {
      bar->addSeparator();
    }
  }
  addToolBar(bar);
  idle_ << menuBar() << bar;
}

QGroupBox* MainView::frame(const char* name, QBoxLayout* layout) {
  auto* const box = add<QGroupBox>(name);
  layout->setContentsMargins(10, 1, 10, 3);
  box->setLayout(layout);
  return box;
}

// What became of the run, and the way to its report.
QWidget* MainView::build_result() {
  auto* const message = add<QLabel>("lblMsg");
  message->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  auto* const report = add<QPushButton>("cmdReport");
  report->setFlat(true);
  report->setAutoDefault(true);
  report->setCursor(Qt::PointingHandCursor);
  QFont font = report->font();
  font.setUnderline(true);
  report->setFont(font);
  connect(report, &QPushButton::clicked, this, [this] { commands_->command("cmdReport"); });
  auto* const layout = column(0);
  layout->addWidget(message);
  layout->addWidget(report);
  auto* const widget = new QWidget;
  widget->setLayout(layout);
  return widget;
}

QWidget* MainView::build_progress() {
  progress_ = new QProgressBar;
  progress_->setObjectName("ProgressBar1");
  progress_->setAccessibleName("進み具合");
  progress_->setAlignment(Qt::AlignCenter);
  auto* const stop = add<QPushButton>("cmdStop");
  // Enter was meant for the button that began the run; Esc stops it.
  stop->setFocusPolicy(Qt::NoFocus);
  connect(stop, &QPushButton::clicked, this, [this] { wants_to_stop(); });
  auto* const layout = row();
  layout->addWidget(progress_, 1);
  layout->addWidget(stop);
  auto* const widget = new QWidget;
  widget->setLayout(layout);
  return widget;
}

QWidget* MainView::build_top() {
  auto* const files = new QGridLayout;
  files->setContentsMargins(0, 0, 0, 0);
  files->setHorizontalSpacing(2 * kGap);
  files->setVerticalSpacing(3);
  const auto add_file = [&](int at, const char* caption, const char* file, const char* count) {
    auto* const path = add<PathLabel>(file);
    path->setAccessibleName(caption);
    files->addWidget(new QLabel(caption), at, 0);
    auto* const place = row();
    place->addWidget(path, 1);
    files->addLayout(place, at, 1);
    auto* const number = add<QLabel>(count);
    number->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    number->setMinimumWidth(number->fontMetrics().horizontalAdvance("変換数: 0000000 件"));
    files->addWidget(number, at, 2);
    return place;
  };
  add_file(0, "入力:", "lblInFile", "lblIn");
  auto* const choose = add<QPushButton>("cmdOutput");
  choose->setAutoDefault(true);
  connect(choose, &QPushButton::clicked, this, [this] { commands_->command("cmdOutput"); });
  add_file(1, "出力:", "lblOutFile", "lblInfo")->addWidget(choose);
  files->setColumnStretch(1, 1);
  auto* const texts = row();
  auto* const guidance = add<QLabel>("lblConv");
  guidance->setMinimumHeight(2 * guidance->fontMetrics().lineSpacing());
  texts->addWidget(guidance);
  auto* const notes = add<QLabel>("lblNotes");
  notes->setWordWrap(true);
  texts->addWidget(notes, 1);
  texts->addWidget(build_result());
  files->addLayout(texts, 2, 0, 1, 3);
  files->addWidget(build_progress(), 3, 0, 1, 3);

  auto* const choices = new QWidget;
  auto* const buttons = row();
  choices->setLayout(buttons);
  idle_ << choices;
  for (const char* name : {"cmdH2L", "cmdeqsl", "cmdL2H", "cmdEnd"}) {
    auto* const button = add<QPushButton>(name);
    QFont font = button->font();
    font.setPointSizeF(font.pointSizeF() * 1.15);
    font.setBold(true);
    button->setFont(font);
    button->setMinimumHeight(38);
    button->setAutoDefault(true);  // Enter presses it
    connect(button, &QPushButton::clicked, this, [this, name] { commands_->command(name); });
    buttons->addWidget(button, std::string_view(name) == "cmdEnd" ? 2 : 3);
  }

  auto* const top = column();
  top->setContentsMargins(0, 0, 4, 0);
  top->addLayout(files);
  top->addWidget(choices);
  auto* const widget = new QWidget;
  widget->setLayout(top);
  return widget;
}

QWidget* MainView::build_left_options() {
  auto* const left = column(4);
  const auto add_pair = [&](const char* frame_name, int first, int second) {
    auto* const pair = row();
    pair->addWidget(add<QCheckBox>(QString("Check%1").arg(first)), 1);
    pair->addWidget(add<QCheckBox>(QString("Check%1").arg(second)), 1);
    left->addWidget(frame(frame_name, pair));
  };
  add_pair("frameSelect", 1, 2);
  add_pair("frameFullWidth", 5, 6);
  add_pair("frameLeaveOut", 3, 4);
  auto* const was = column(3);
  auto* const how = row();
  for (const int number : {9, 10, 11})
    how->addWidget(add<QCheckBox>(QString("Check%1").arg(number)));
  was->addLayout(how);
  auto* const where = row();
  for (int i = 0; i < 3; ++i) where->addWidget(add<QRadioButton>(QString("Option2_%1").arg(i)));
  was->addLayout(where);
  auto* const keyword = row();
  auto* const text = add<QLineEdit>("txtWas");
  text->setAccessibleName("州名の接頭語");
  auto* const label = new QLabel("接頭語");
  label->setBuddy(text);
  keyword->addWidget(label);
  keyword->addWidget(text, 1);
  auto* const clear = add<QPushButton>("Command1");
  clear->setAutoDefault(true);
  connect(clear, &QPushButton::clicked, this, [this] { commands_->command("Command1"); });
  keyword->addWidget(clear);
  was->addLayout(keyword);
  left->addWidget(frame("frameWas", was));
  left->addStretch();
  auto* const widget = new QWidget;
  widget->setLayout(left);
  return widget;
}

QWidget* MainView::build_right_options() {
  auto* const right = column(4);
  auto* const time = column(3);
  auto* const choice = row();
  for (int i = 0; i < 4; ++i) choice->addWidget(add<QRadioButton>(QString("Option1_%1").arg(i)));
  time->addLayout(choice);
  auto* const explained = row();
  explained->addWidget(add<QLabel>("lblJ2U_0"), 1);
  explained->addWidget(add<QLabel>("lblJ2U_1"), 1);
  time->addLayout(explained);
  right->addWidget(frame("frameTime", time));

  auto* const zlog = column(3);
  auto* const zone = row();
  for (int i = 0; i < 2; ++i) zone->addWidget(add<QRadioButton>(QString("Option3_%1").arg(i)));
  zone->addWidget(add<QCheckBox>("Check12"));
  auto* const year = add<QLineEdit>("txtYYYY");
  year->setAccessibleName("年");
  year->setMaximumWidth(year->fontMetrics().horizontalAdvance("00000000"));
  zone->addWidget(year);
  zone->addWidget(new QLabel("年"));
  zone->addStretch();
  zlog->addLayout(zone);
  auto* const told = row();  // by the log
  auto* const why = add<PathLabel>("lblZone");
  why->setAccessibleName("時刻の読み方");
  told->addWidget(why, 3);
  auto* const name = add<PathLabel>("lblContest");
  name->setAccessibleName("コンテスト名");
  told->addWidget(name, 2);
  zlog->addLayout(told);
  right->addWidget(frame("frameZlog", zlog));

  auto* const rest = column(0);
  auto* const name_and_qth = row();
  name_and_qth->addWidget(add<QCheckBox>("Check8"));
  name_and_qth->addWidget(add<QCheckBox>("Check16"), 1);
  rest->addLayout(name_and_qth);
  for (const int number : {14, 7, 13, 15}) {
    rest->addWidget(add<QCheckBox>(QString("Check%1").arg(number)));
  }
  right->addLayout(rest);
  right->addStretch();
  auto* const widget = new QWidget;
  widget->setLayout(right);
  return widget;
}

QWidget* MainView::build_grids() {
  auto* const grids = new QGridLayout;
  grids->setContentsMargins(0, 0, 0, 0);
  grids->setHorizontalSpacing(2 * kGap);
  grids->setVerticalSpacing(2);
  grids->addWidget(new QLabel("BAND 変換テーブル  L <--> H  双方向使用可能"), 0, 0);
  grids->addWidget(new QLabel("MODE 変換テーブル    L <--> H "), 0, 1);
  bands_place_ = new QWidget;
  modes_place_ = new QWidget;
  for (QWidget* const place : {bands_place_, modes_place_}) {
    auto* const layout = column();
    place->setLayout(layout);
    place->setMinimumHeight(120);
  }
  grids->addWidget(bands_place_, 1, 0);
  grids->addWidget(modes_place_, 1, 1);
  grids->setRowStretch(1, 1);
  grids->setColumnStretch(0, 3);
  grids->setColumnStretch(1, 2);
  grids->addWidget(note("BAND ：  CSV は７文字迄との制限があります。\n"
                        "1　： Rmks 1 の左側　　２　： Rmks 1 の右側　　３　： Rmks ２ の左側　　"
                        "４　： Rmks ２ の左側"),
                   2, 0);
  grids->addWidget(note("注意 ： MODE に関して　Hamlog 側 ( CSV ) では\n"
                        "　　　　 ３文字迄との制限があります。"),
                   2, 1);
  grids->addWidget(add<PathLabel>("lblSaving"), 3, 0, 1, 2);
  auto* const widget = new QWidget;
  widget->setLayout(grids);
  return widget;
}

QWidget* MainView::build_options() {
  auto* const options = new QHBoxLayout;
  options->setContentsMargins(0, 0, 0, 0);
  options->setSpacing(2 * kGap);
  options->addWidget(build_left_options(), 1);
  options->addWidget(build_right_options(), 1);
  auto* const all = column(kGap);
  all->setContentsMargins(0, 0, kGap, 0);
  all->addLayout(options);
  all->addWidget(build_grids(), 1);
  auto* const widget = new QWidget;
  widget->setLayout(all);
  return widget;
}

void MainView::build() {
  auto* const scroll = new QScrollArea;  // for small screens
  scroll->setWidgetResizable(true);
  scroll->setFrameShape(QFrame::NoFrame);
  scroll->setWidget(build_options());
  scroll->setFocusPolicy(Qt::NoFocus);
  idle_ << scroll;
  auto* const all = new QVBoxLayout;
  all->setContentsMargins(10, 6, 6, 6);
  all->addWidget(build_top());
  all->addWidget(scroll, 1);
  auto* const content = new QWidget;
  content->setLayout(all);
  // Enter is not to press whatever button comes first before there is something to do.
  content->setFocusPolicy(Qt::ClickFocus);
  setCentralWidget(content);
  content->setFocus();
  setTabOrder(findChild<QWidget*>("cmdEnd"), findChild<QWidget*>("cmdOutput"));
}

}  // namespace tobarine
