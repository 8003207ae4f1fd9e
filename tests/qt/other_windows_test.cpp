// The viewer, the report and the file editor.
#include <QAction>
#include <QComboBox>
#include <QPushButton>
#include <QScrollBar>
#include <QTreeWidget>
#include <algorithm>

#include "editors/qt/window_size.h"
#include "qt/window_fixture.h"
#include "text/error.h"
#include "text/strings.h"

namespace tobarine {
namespace {

TEST_F(WindowTest, TheViewerScrollsFindsAndGoesToALine) {
  std::string text;
  for (int i = 1; i <= 500; ++i) text += "line " + std::to_string(i) + "\n";
  shell_->open_viewer(folder_.text("short.txt", text), 400);
  auto* viewer = other_window<ViewerView>("frmDisp2");
  auto* const list = viewer->findChild<QListView*>("List1");
  EXPECT_EQ(list->model()->rowCount(), 500);
  EXPECT_EQ(list->currentIndex().row(), 399);
  EXPECT_EQ(list->horizontalScrollBar()->maximum(), 0);
  ASSERT_TRUE(QTest::qWaitForWindowActive(viewer));
  QTest::keySequence(viewer, QKeySequence(QKeySequence::Find));
  auto* const wanted = viewer->findChild<QLineEdit*>("txtFind");
  EXPECT_TRUE(wanted->isVisible());
  QTest::keyClicks(wanted, "LINE 45");
  const auto* const note = viewer->findChild<QLabel*>("lblFind");
  QTest::keyClick(wanted, Qt::Key_Return);
  EXPECT_EQ(list->currentIndex().row(), 449);
  EXPECT_EQ(note->text(), "");
  auto* const previous = viewer->findChild<QPushButton*>("cmdFindPrevious");
  previous->setFocus();
  QTest::keyClick(previous, Qt::Key_Return);
  EXPECT_EQ(list->currentIndex().row(), 44);
  previous->click();
  EXPECT_EQ(list->currentIndex().row(), 458);
  EXPECT_EQ(note->text(), "末尾に戻りました");
  wanted->setText("nowhere");
  previous->click();
  EXPECT_EQ(list->currentIndex().row(), 458);
  EXPECT_EQ(note->text(), "見つかりません");
  QTest::keyClick(viewer, Qt::Key_Escape);  // first the bar, then the window
  EXPECT_TRUE(viewer->isVisible() && !wanted->isVisible());
  QTest::keyClick(viewer, Qt::Key_Escape);
  QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  shell_->open_viewer(folder_.text("wide.txt", std::string(2000, 'x') + "\n<h1>\x1B"), 0);
  viewer = other_window<ViewerView>("frmDisp2");
  EXPECT_EQ(viewer->findChild<QListView*>("List1")->model()->index(1, 0).data().toString(),
            "<h1>␛");
  EXPECT_GT(viewer->findChild<QListView*>("List1")->horizontalScrollBar()->maximum(), 0);
}

class ReportTest : public WindowTest {
 protected:
  ReportTest() {
    commands_->open_file(sample("hamlog.csv"));
    find<QPushButton>("cmdH2L")->click();
    find<QAction>("mnuDisp_report")->trigger();
    report_ = other_window<ReportView>("frmReport");
    tree_ = report_->findChild<QTreeWidget*>("treeReport");
  }
  int shown_rows() const {
    int count = 0;
    for (int i = 0; i < tree_->topLevelItemCount(); ++i)
      count += !tree_->topLevelItem(i)->isHidden();
    return count;
  }
  ReportView* report_;
  QTreeWidget* tree_;
};

TEST_F(ReportTest, AClickShowsTheLineOfTheFileReportedOnInOneViewer) {
  commands_->open_file(sample("logger32.adi"));
  for (const int row : {0, 3}) {
    emit tree_->itemClicked(tree_->topLevelItem(row), 0);
    auto* const viewer = other_window<ViewerView>("frmDisp2");
    EXPECT_EQ(viewer->file(), folder_ / "hamlog.csv");
    EXPECT_EQ(viewer->findChild<QListView*>("List1")->currentIndex().row() + 1,
              tree_->topLevelItem(row)->text(0).toInt());
  }
  const auto viewers = std::ranges::count_if(QApplication::topLevelWidgets(), [](QWidget* widget) {
    return widget->objectName() == "frmDisp2" && widget->isVisible();
  });
  EXPECT_EQ(viewers, 1);
  folder_.text("hamlog.csv", "renewed\r\n");
  emit tree_->itemClicked(tree_->topLevelItem(0), 0);
  const auto* list = other_window<ViewerView>("frmDisp2")->findChild<QListView*>("List1");
  EXPECT_EQ(list->model()->index(0, 0).data().toString(), "renewed");
}

TEST_F(ReportTest, SortsSearchesAndSaves) {
  const int all = shown_rows();
  ASSERT_GT(all, 3);
  tree_->sortByColumn(0, Qt::DescendingOrder);
  for (int i = 1; i < all; ++i) {
    EXPECT_GE(tree_->topLevelItem(i - 1)->text(0).toInt(), tree_->topLevelItem(i)->text(0).toInt());
  }
  auto* const kinds = report_->findChild<QComboBox*>("cmbKinds");
  int of_kinds = 0;
  for (int i = 1; i < kinds->count(); ++i) {
    kinds->setCurrentIndex(i);
    EXPECT_TRUE(kinds->currentText().endsWith(QString(": %1 件").arg(shown_rows())));
    of_kinds += shown_rows();
  }
  EXPECT_EQ(of_kinds, all);
  const auto advised = [&](FindingKind kind) {
    kinds->setCurrentIndex(kinds->findData(static_cast<int>(kind)));
    return report_->findChild<QLabel*>("lblAdvice")->text().toStdString();
  };
  EXPECT_TRUE(contains(advised(FindingKind::kUnknownCode), "[ Tool ] の「Hamlog の Code を"));
  kinds->setCurrentIndex(0);
  QTest::keySequence(report_, QKeySequence(QKeySequence::Find));
  auto* const wanted = report_->findChild<QLineEdit*>("txtFind");
  QTest::keyClicks(wanted, tree_->topLevelItem(0)->text(1).toLower());
  EXPECT_TRUE(shown_rows() > 0 && shown_rows() < all);
  report_->save(folder_ / "report.txt");
  EXPECT_TRUE(contains(TestFolder::bytes_of(folder_ / "report.txt"), "行目"));
  report_->save(folder_ / "report.CSV");
  const std::string table = TestFolder::bytes_of(folder_ / "report.CSV");
  EXPECT_TRUE(table.starts_with("\xEF\xBB\xBF行,コール,内容,お知らせ\r\n"));
  EXPECT_EQ(std::ranges::count(table, '\n'), all + 1);
  EXPECT_THROW(report_->save(folder_ / "none/report.txt"), FileError);
}

TEST(PlacementTest, AWindowStandsBesideAnotherWhereThereIsRoom) {
  const QRect screen(0, 0, 1366, 768);
  const QSize wanted(820, 560);
  EXPECT_EQ(place_beside(screen, {0, 0, 864, 688}, wanted), QRect(864, 0, 502, 560));
  EXPECT_EQ(place_beside(screen, {502, 20, 864, 688}, wanted), QRect(0, 20, 502, 560));
  EXPECT_EQ(place_beside(screen, {303, 0, 760, 460}, wanted), QRect(303, 460, 820, 308));
  EXPECT_EQ(place_beside(screen, {251, 40, 864, 688}, wanted), QRect(546, 384, 820, 384));
}

TEST_F(WindowTest, TheEditorSavesUndoesAndAsks) {
  const fs::path file = folder_.text("e.csv", "一,二\r\n三\r\n");
  shell_->open_editor(file);
  auto* const editor = other_window<FileEditorView>("Hamlog_csv_Edit");
  EXPECT_EQ(editor->windowTitle().toStdString(), file.string() + " ");
  auto* const text = editor->findChild<QPlainTextEdit*>("Text1");
  text->moveCursor(QTextCursor::End);
  QTest::keyClicks(text, "abc");
  answer_with(QMessageBox::Cancel);
  EXPECT_FALSE(editor->may_close());
  answer_with(QMessageBox::Ok);
  editor->findChild<QAction*>("mnuSave")->trigger();
  EXPECT_EQ(TestFolder::bytes_of(file), to_cp932("一,二\r\n三\r\nabc"));
  EXPECT_TRUE(editor->may_close());
  editor->findChild<QAction*>("mnuUndo")->trigger();
  answer_with(QMessageBox::Discard);
  EXPECT_TRUE(editor->may_close());
  shell_->open_editor(folder_ / "." / "e.csv");  // the same
  EXPECT_EQ(std::ranges::count_if(QApplication::topLevelWidgets(),
                                  [](QWidget* w) { return w->objectName() == "Hamlog_csv_Edit"; }),
            1);
  EXPECT_THROW(shell_->open_editor(folder_.file("empty.csv", "")), FileError);
  EXPECT_THROW(shell_->open_editor(folder_.file("odd.csv", "a\rb")), FileError);
  commands_->set_edit_file(folder_ / "empty.csv");
  commands_->command("mnuHamlo_csv_Edit");
  EXPECT_EQ(shell_->messages.size(), 1U);
  shell_->chosen = folder_.text("other.csv", "x");
  commands_->command("mnuHamlo_csv_Edit");  // asks again
  EXPECT_EQ(shell_->chosen, std::nullopt);
}

TEST_F(WindowTest, TheEditorTellsWhatStandsBehindAShorterText) {
  const fs::path file = folder_.text("e.csv", "one\r\ntwo\r\n");
  shell_->open_editor(file);
  auto* const editor = other_window<FileEditorView>("Hamlog_csv_Edit");
  auto* const text = editor->findChild<QPlainTextEdit*>("Text1");
  text->setPlainText("one\n");
  QString told;
  QTimer::singleShot(0, [&] {
    auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    ASSERT_NE(box, nullptr);
    told = box->text();
    EXPECT_EQ(box->buttons().size(), 2);
    QTest::keyClick(box, Qt::Key_Escape);
  });
  editor->findChild<QAction*>("mnuSave")->trigger();
  EXPECT_TRUE(told.startsWith("上書き保存完了！"));
  EXPECT_TRUE(told.contains("5 バイト"));
  EXPECT_TRUE(editor->findChild<QLabel*>("lblRest")->isVisible());
  EXPECT_EQ(TestFolder::bytes_of(file), "one\r\ntwo\r\n");
  answer_with(QMessageBox::Ok);
  EXPECT_TRUE(editor->save_as(folder_ / "new.csv"));
  EXPECT_EQ(TestFolder::bytes_of(folder_ / "new.csv"), "one\r\n");
  EXPECT_FALSE(editor->findChild<QLabel*>("lblRest")->isVisible());
  const fs::path dropped = folder_.text("dropped.csv", "x");
  drop_file(dropped, *text->viewport());
  EXPECT_EQ(text->toPlainText(), "one\n");
  QList<QWidget*> windows = QApplication::topLevelWidgets();
  EXPECT_TRUE(std::ranges::any_of(
      windows, [](QWidget* window) { return window->windowTitle().contains("dropped.csv"); }));
}

}  // namespace
}  // namespace tobarine
