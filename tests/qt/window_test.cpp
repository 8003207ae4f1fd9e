// The real windows, without a screen: that what the user does reaches the commands, and that what
// the commands say is shown.
#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QRadioButton>
#include <QSettings>
#include <QToolBar>
#include <algorithm>

#include "app/qt/mirror.h"
#include "paths.h"
#include "qt/window_fixture.h"

namespace tobarine {
namespace {

TEST_F(WindowTest, HoldsEveryControlWithItsCaption) {
  for_each_control(commands_->controls, [&](const std::string& name, const Control& control) {
    auto* const object = find<QObject>(QString::fromStdString(name));
    const QString text = shown_text(control);
    if (auto* const button = qobject_cast<QAbstractButton*>(object)) {
      EXPECT_EQ(plain(button->text()), text) << name;
      EXPECT_EQ(button->isChecked(), control.checked) << name;
    } else if (auto* const box = qobject_cast<QGroupBox*>(object)) {
      EXPECT_EQ(box->title(), text) << name;
    } else if (auto* const action = qobject_cast<QAction*>(object)) {
      EXPECT_EQ(plain(action->text()), text) << name;
      EXPECT_EQ(action->isEnabled(), control.enabled) << name;
    } else if (auto* const label = qobject_cast<QLabel*>(object)) {
      EXPECT_EQ(label->text(), text) << name;
    }
  });
  for (const MenuEntry& entry : menu_entries()) {
    auto* const action = find<QAction>(
        QString::fromUtf8(entry.name.data()).left(static_cast<int>(entry.name.size())));
    EXPECT_EQ(plain(action->text()).toStdString(), entry.caption);
  }
  EXPECT_EQ(shell_->view().windowTitle().toStdString(), commands_->controls.title);
  EXPECT_EQ(find<QCheckBox>("Check16")->toolTip(), "ＱＴＨ欄が空白で無ければ転記します");
  EXPECT_EQ(find<QTableWidget>("MSFlexGrid1")->horizontalHeaderItem(3)->text(), " メモ書き");
}

TEST_F(WindowTest, NothingIsCutOffAtItsLargestSize) {
  shell_->view().resize(4000, 4000);
  EXPECT_EQ(shell_->view().size(), QSize(864, 688));
  QApplication::processEvents();
  for (const auto* widget : shell_->view().findChildren<QAbstractButton*>()) {
    if (!widget->isVisible() || widget->text().isEmpty()) continue;
    EXPECT_GE(widget->width(), widget->sizeHint().width()) << widget->text().toStdString();
    EXPECT_GE(widget->height(), widget->minimumSizeHint().height());
  }
}

TEST_F(WindowTest, EveryControlCanBeReachedAndNamedWithoutAMouse) {
  for (const auto* widget : shell_->view().findChildren<QWidget*>()) {
    const bool input = qobject_cast<const QLineEdit*>(widget) != nullptr ||
                       qobject_cast<const QTableWidget*>(widget) != nullptr;
    if (input) {
      EXPECT_FALSE(widget->accessibleName().isEmpty()) << widget->objectName().toStdString();
    }
    if (qobject_cast<const QCheckBox*>(widget) != nullptr) {
      EXPECT_TRUE((widget->focusPolicy() & Qt::TabFocus) != 0);
    }
  }
  EXPECT_EQ(find<QPushButton>("cmdH2L")->shortcut(), QKeySequence("Alt+H"));
}

TEST_F(WindowTest, ClicksAndTypedTextReachTheSettings) {
  auto* const check = find<QCheckBox>("Check8");
  check->click();
  EXPECT_EQ(commands_->settings().write_name, 1);
  const auto ground = check->parentWidget()->palette().color(QPalette::Window);
  EXPECT_EQ(check->palette().color(QPalette::Active, QPalette::WindowText),
            shown_colour(Colour::kLightBlue, ground));
  check->click();
  EXPECT_EQ(commands_->settings().write_name, 0);
  EXPECT_EQ(check->palette().color(QPalette::Active, QPalette::WindowText),
            QApplication::palette().color(QPalette::WindowText));
  find<QRadioButton>("Option3_1")->click();
  EXPECT_EQ(commands_->settings().zlog_in_jst, 1);
  EXPECT_TRUE(find<QRadioButton>("Option2_2")->isChecked());  // other groups stay as they are
  find<QRadioButton>("Option2_0")->click();
  EXPECT_EQ(commands_->settings().state_remarks, 0);
  find<QRadioButton>("Option1_3")->click();
  EXPECT_EQ(find<QLabel>("lblJ2U_1")->text(), "JA 局のみ JST に変換");
  auto* const was = find<QLineEdit>("txtWas");
  was->setFocus();
  QTest::keyClicks(was, "X");
  EXPECT_EQ(commands_->settings().state_keyword, "WAS=X");
  find<QPushButton>("Command1")->click();
  EXPECT_EQ(was->text(), "");
  find<QCheckBox>("Check12")->click();
  EXPECT_TRUE(find<QLineEdit>("txtYYYY")->isReadOnly());
}

TEST_F(WindowTest, HamlogToAdifByKeyboardAlone) {
  shell_->chosen = sample("hamlog.csv");
  press("Ctrl+O");
  EXPECT_EQ(find<QLabel>("lblIn")->text(), "入力数: 48 件");
  EXPECT_FALSE(find<QRadioButton>("Option1_0")->isEnabled());
  EXPECT_FALSE(find<QPushButton>("cmdL2H")->isEnabled());
  QTest::keyClick(&shell_->view(), Qt::Key_H, Qt::AltModifier);
  EXPECT_TRUE(QTest::qWaitFor([&] { return !find<QLabel>("lblMsg")->text().isEmpty(); }));
  EXPECT_EQ(find<QLabel>("lblInfo")->text(), "変換数: 48 件");
  EXPECT_EQ(find<QLabel>("lblMsg")->text(), "処理終了");
  EXPECT_TRUE(fs::exists(folder_ / "hamlog.adi"));
  press("Ctrl+U");
  auto* const viewer = other_window<ViewerView>("frmDisp2");
  auto* const list = viewer->findChild<QListView*>("List1");
  EXPECT_EQ(list->model()->index(4, 0).data().toString(), "<EOH>");
  press("Ctrl+R");
  EXPECT_NE(other_window<ReportView>("frmReport"), nullptr);
}

TEST_F(WindowTest, AdifToHamlogByMouse) {
  shell_->chosen = sample("logger32.adi");
  find<QAction>("開 adi")->trigger();
  EXPECT_TRUE(find<QPushButton>("cmdL2H")->hasFocus());
  EXPECT_FALSE(find<QAction>("変換 H2L")->isEnabled());
  find<QRadioButton>("Option1_1")->click();
  QTest::mouseClick(find<QPushButton>("cmdL2H"), Qt::LeftButton);
  EXPECT_EQ(find<QLabel>("lblInfo")->text(), "変換数: 15 件");
  EXPECT_TRUE(find<QAction>("表示 o")->isEnabled());
}

TEST_F(WindowTest, ADroppedLogIsOpenedAndRemembered) {
  const fs::path log = sample("contest.zlo");
  drop_file(log, *find<QLineEdit>("txtWas"));
  EXPECT_EQ(find<QLineEdit>("txtWas")->text(), "WAS=");
  EXPECT_EQ(find<QLabel>("lblContest")->text(), "ALL JA コンテスト");
  EXPECT_TRUE(find<QRadioButton>("Option3_1")->isChecked());
  EXPECT_EQ(find<QLabel>("lblZone")->text(), "JST (ファイルに記されている)");
  EXPECT_EQ(plain(find<QPushButton>("cmdH2L")->text()), "変換　Z -> L");
  auto* const recent = find<QMenu>("mnuRecent");
  ASSERT_FALSE(recent->actions().isEmpty());
  EXPECT_TRUE(recent->actions()[0]->text().startsWith("contest.zlo"));
  QTest::mouseClick(find<QPushButton>("cmdeqsl"), Qt::LeftButton);
  EXPECT_TRUE(fs::exists(folder_ / "contest.adi"));
  sample("hamlog.csv");
  const fs::path here = fs::current_path();
  fs::current_path(folder_.path());
  commands_->open_file("hamlog.csv");
  fs::current_path(here);
  EXPECT_EQ(commands_->input(), folder_ / "hamlog.csv");
  recent->actions()[1]->trigger();
  EXPECT_EQ(commands_->input(), log);
  const auto listed = [&] {
    return std::ranges::count_if(recent->actions(), [](const QAction* action) {
      return action->text().startsWith("what.csv") || action->text().startsWith("contest.zlo");
    });
  };
  commands_->open_file(folder_.text("what.csv", "no log"));
  EXPECT_EQ(listed(), 1);
  folder_.text("contest.zlo", "no log any more");
  recent->actions()[0]->trigger();
  EXPECT_EQ(listed(), 0);
}

TEST_F(WindowTest, EnterPressesTheFocusedButton) {
  QTest::keyClick(shell_->view().focusWidget(), Qt::Key_Return);  // there is nothing to do yet
  EXPECT_TRUE(shell_->view().isVisible());
  find<QPushButton>("Command1")->setFocus();
  QTest::keyClick(find<QPushButton>("Command1"), Qt::Key_Return);
  EXPECT_EQ(find<QLineEdit>("txtWas")->text(), "");
  commands_->open_file(sample("hamlog.csv"));
  EXPECT_FALSE(find<QPushButton>("cmdH2L")->hasFocus());  // the user is elsewhere
  find<QPushButton>("cmdeqsl")->setFocus();
  QTest::keyClick(find<QPushButton>("cmdeqsl"), Qt::Key_Enter);
  EXPECT_EQ(find<QLabel>("lblMsg")->text(), "処理終了");
  find<QPushButton>("cmdReport")->click();
  EXPECT_NE(other_window<ReportView>("frmReport"), nullptr);
}

TEST_F(WindowTest, AMessageShowsItsTextAsItIs) {
  bool plain_text = false;
  QString text;
  QTimer::singleShot(0, [&] {
    auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    ASSERT_NE(box, nullptr);
    plain_text = box->textFormat() == Qt::PlainText;
    text = box->text();
    box->accept();
  });
  shell_->QtShell::show_message(Shell::Icon::kCritical, {"Tobarine", "<h1>x\r\n\x1B[1m"});
  EXPECT_TRUE(plain_text);
  EXPECT_EQ(text, "<h1>x\n␛[1m");
  commands_->open_file(folder_.text("<h1>x.csv", "x"));
  EXPECT_EQ(find<QLabel>("lblInFile")->textFormat(), Qt::PlainText);
  QApplication::processEvents();
  EXPECT_TRUE(find<QLabel>("lblInFile")->toolTip().endsWith("&lt;h1&gt;x.csv"));
}

TEST_F(WindowTest, TheWindowTellsHowThingsStandBeforeAMessage) {
  commands_->jarl_server.url = "http://127.0.0.1:1/";  // nobody there
  commands_->command("mnuJARL_Download");
  EXPECT_EQ(find<QLabel>("lblMsg")->text(), "JARL のリストを取得しています…");
  EXPECT_TRUE(QTest::qWaitFor([&] { return !shell_->messages.empty(); }));
  EXPECT_EQ(shell_->shown_with_message, "");
}

TEST_F(WindowTest, AQuestionIsAnsweredByAButtonOrLeftByEscape) {
  const auto ask_and = [this](auto act) {
    QTimer::singleShot(0, [act] {
      auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      ASSERT_NE(box, nullptr);
      EXPECT_TRUE(box->text().contains("JST"));
      act(*box);
    });
    return shell_->ask({"Tobarine", "JST?", {"はい", "いいえ"}});
  };
  const auto click_no = [](QMessageBox& box) {
    for (QAbstractButton* const button : box.buttons()) {
      if (plain(button->text()) == "いいえ") button->click();
    }
  };
  EXPECT_EQ(ask_and(click_no), 1U);
  EXPECT_EQ(ask_and([](QMessageBox& box) { QTest::keyClick(&box, Qt::Key_Escape); }), std::nullopt);
}

TEST_F(WindowTest, TheOutputIsChosenBesideItsName) {
  auto* const choose = find<QPushButton>("cmdOutput");
  EXPECT_FALSE(choose->isEnabled());
  commands_->open_file(sample("hamlog.csv"));
  shell_->chosen = folder_ / "other.adi";
  choose->click();
  EXPECT_TRUE(find<QLabel>("lblOutFile")->text().endsWith("other.adi"));
  EXPECT_EQ(choose->mapTo(&shell_->view(), QPoint()).y() / 10,
            find<QLabel>("lblOutFile")->mapTo(&shell_->view(), QPoint()).y() / 10);
  find<QPushButton>("cmdH2L")->click();
  EXPECT_TRUE(fs::exists(folder_ / "other.adi") && !fs::exists(folder_ / "hamlog.adi"));
}

TEST_F(WindowTest, EscapeStopsALongRun) {
  std::string log;
  for (int i = 0; i < 400000; ++i) log += "JA1ABC,24/05/01,12:00U,59,59,7,CW,1001,,J  ,,,,,0\n";
  commands_->open_file(folder_.text("long.csv", log));
  auto* const h2l = find<QPushButton>("cmdH2L");
  h2l->setFocus();
  const std::vector<const char*> idle = {"cmdH2L", "cmdEnd", "Check1", "MSFlexGrid1", "txtWas"};
  const auto enabled = [&](const char* name) { return find<QWidget>(name)->isEnabled(); };
  QTimer::singleShot(0, [&] {
    EXPECT_TRUE(std::ranges::none_of(idle, enabled));
    EXPECT_FALSE(shell_->view().menuBar()->isEnabled() || find<QToolBar>("Toolbar1")->isEnabled());
    EXPECT_TRUE(find<QPushButton>("cmdStop")->isEnabled());
    EXPECT_TRUE(find<QProgressBar>("ProgressBar1")->text().endsWith('%'));
    QTest::keyClick(&shell_->view(), Qt::Key_Escape);
  });
  h2l->click();
  EXPECT_EQ(find<QLabel>("lblMsg")->text(), "中止しました");
  EXPECT_TRUE(shell_->messages.empty());
  EXPECT_TRUE(std::ranges::all_of(idle, enabled) && h2l->hasFocus());
  QTimer::singleShot(0, [&] { find<QPushButton>("cmdStop")->click(); });
  find<QPushButton>("cmdeqsl")->click();
  EXPECT_EQ(find<QLabel>("lblMsg")->text(), "中止しました");
  find<QPushButton>("cmdeqsl")->click();  // the wish does not outlive the run
  EXPECT_EQ(find<QLabel>("lblMsg")->text(), "処理終了");
}

TEST_F(WindowTest, TheZlogWindowConvertsAndEdits) {
  find<QAction>("adif2zlog_all")->trigger();
  auto* const zlog = shell_->zlog_view();
  ASSERT_TRUE(zlog != nullptr && zlog->isVisible());
  const auto click = [&](const char* name) { zlog->findChild<QAbstractButton*>(name)->click(); };
  click("Check10");
  EXPECT_EQ(commands_->settings().write_comment, "1");
  auto* const combo = zlog->findChild<QComboBox*>("Combo10");
  combo->setCurrentIndex(1);
  emit combo->textActivated("2");
  EXPECT_EQ(commands_->settings().comment_remarks, "2");
  click("Option2_1");
  EXPECT_EQ(commands_->settings().zlog_time, "ALL_J");
  QTest::keyClicks(zlog->findChild<QLineEdit*>("Text7"), "13M");
  EXPECT_EQ(commands_->settings().sent_number, "13M");
  commands_->select_option1(2);  // the main window has that setting, too
  EXPECT_TRUE(zlog->findChild<QAbstractButton*>("Option2_2")->isChecked());
  click("Option2_1");
  shell_->chosen = sample("n1mm.adi");
  click("cmdOpen");
  shell_->chosen = folder_ / "n1mm.all";
  click("cmdOutput");
  click("cmdConvert");
  EXPECT_FALSE(shell_->chosen);
  EXPECT_EQ(zlog->findChild<QLabel*>("lblInfo")->text(), "変換数: 8 件");
  EXPECT_TRUE(fs::exists(folder_ / "n1mm.zlo"));
  EXPECT_TRUE(zlog->findChild<QPlainTextEdit*>("lblNotes")->toPlainText().contains(".zlo は JST"));
  zlog->findChild<QAction*>("mnuALL")->trigger();
  EXPECT_TRUE(other_window<FileEditorView>("Hamlog_csv_Edit")->windowTitle().contains("n1mm.all"));
  shell_->chosen = folder_.text("none.adi", "<EOH>\r\n");  // no contact: an empty CSV
  click("cmdOpen");
  click("cmdConvert");
  zlog->findChild<QAction*>("mnuCSV")->trigger();
  EXPECT_EQ(shell_->messages.size(), 1U);
  zlog->findChild<QAction*>("mnuBack")->trigger();
  EXPECT_FALSE(zlog->isVisible());
}

TEST_F(WindowTest, ThePlaceIsRememberedAndTheExitRoutineRuns) {
  shell_->view().resize(700, 500);
  folder_.file("home/x.hdx", "");
  shell_->view().close();
  EXPECT_FALSE(fs::exists(folder_ / "home/x.hdx"));
  start();
  EXPECT_EQ(shell_->view().size(), QSize(700, 500));
}

}  // namespace
}  // namespace tobarine

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const tobarine::TestFolder platform;  // where the window's place is remembered
  qputenv("XDG_CONFIG_HOME", platform.path().string().c_str());
  ::testing::InitGoogleTest(&argc, argv);
  const QApplication application(argc, argv);
  QApplication::setQuitOnLastWindowClosed(false);
  return RUN_ALL_TESTS();
}
