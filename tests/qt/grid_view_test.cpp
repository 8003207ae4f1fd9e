// Editing in the grids of the main window.
#include "editors/qt/grid_view.h"

#include "qt/window_fixture.h"

namespace tobarine {
namespace {

class GridTest : public WindowTest {
 protected:
  GridTest() : grid_(find<GridView>("MSFlexGrid1")), box_(grid_->box()) {
    grid_->setFocus();
    grid_->setCurrentCell(0, 1);
  }
  GridView* grid_;
  QLineEdit* box_;
};

TEST_F(GridTest, ATypedLetterOpensTheYellowBoxOverTheCell) {
  EXPECT_EQ(box_->objectName(), "Text1");
  QTest::keyClicks(grid_, "a");
  EXPECT_TRUE(box_->isVisible() && box_->hasFocus());
  EXPECT_EQ(box_->text(), "a");
  EXPECT_EQ(box_->cursorPosition(), 1);
  EXPECT_EQ(box_->geometry(), grid_->visualItemRect(grid_->item(0, 1)));
  EXPECT_TRUE(box_->styleSheet().contains("yellow"));
  QTest::keyClicks(box_, "bc");
  QTest::keyClick(box_, Qt::Key_Return);
  EXPECT_FALSE(box_->isVisible());
  EXPECT_TRUE(grid_->hasFocus());
  EXPECT_EQ(grid_->item(0, 1)->text(), "abc");
  EXPECT_EQ(grid_->currentColumn(), 2);
}

TEST_F(GridTest, EnterF2AndADoubleClickOpenTheWholeText) {
  const auto opened = [&] {
    const bool open = box_->isVisible() && box_->text() == "70CM" && box_->cursorPosition() == 4;
    QTest::keyClick(box_, Qt::Key_Escape);
    return open && !box_->isVisible();
  };
  QTest::keyClick(grid_, Qt::Key_Return);
  EXPECT_TRUE(opened());
  QTest::keyClick(grid_, Qt::Key_F2);
  EXPECT_TRUE(opened());
  const QPoint cell = grid_->visualItemRect(grid_->item(0, 1)).center();
  QTest::mouseClick(grid_->viewport(), Qt::LeftButton, Qt::NoModifier, cell);
  QTest::mouseDClick(grid_->viewport(), Qt::LeftButton, Qt::NoModifier, cell);
  EXPECT_TRUE(opened());
  EXPECT_EQ(grid_->item(0, 1)->text(), "70CM");
}

TEST_F(GridTest, OtherKeysStoreAndMove) {
  QTest::keyClicks(grid_, "x");
  QTest::keyClick(box_, Qt::Key_Up);
  EXPECT_EQ(grid_->currentRow(), 0);
  EXPECT_EQ(grid_->item(0, 1)->text(), "x");
  QTest::keyClicks(grid_, "y");
  QTest::keyClick(box_, Qt::Key_Down);
  EXPECT_EQ(grid_->currentRow(), 1);
  QTest::keyClicks(grid_, "z");
  QTest::keyClick(box_, Qt::Key_Tab);
  EXPECT_EQ(grid_->item(1, 1)->text(), "z");
  EXPECT_EQ(grid_->currentColumn(), 2);
}

TEST_F(GridTest, WhatIsNotSavedIsGreyAndAnEditIsToldToCountLater) {
  const QBrush usable = grid_->item(9, 1)->foreground();
  EXPECT_NE(grid_->item(10, 1)->foreground(), usable);
  EXPECT_EQ(grid_->item(0, 0)->background(), grid_->palette().brush(QPalette::Window));
  EXPECT_EQ(grid_->item(9, 1)->background(), grid_->palette().brush(QPalette::Base));
  auto* const told = find<QLabel>("lblSaving");
  EXPECT_FALSE(told->isVisible());
  grid_->setCurrentCell(0, 0);
  QTest::keyClicks(grid_, "5");
  EXPECT_FALSE(box_->isVisible());
  EXPECT_TRUE(told->text().contains("No の欄"));
  grid_->setCurrentCell(0, 1);
  QTest::keyClicks(grid_, "x");
  QTest::keyClick(box_, Qt::Key_Return);
  EXPECT_TRUE(told->isVisible() && told->text().contains("次の起動から使われます"));
}

TEST_F(GridTest, AClickElsewhereInTheGridStores) {
  QTest::keyClicks(grid_, "q");
  const QPoint cell = grid_->visualItemRect(grid_->item(2, 2)).center();
  QTest::mouseClick(grid_->viewport(), Qt::LeftButton, Qt::NoModifier, cell);
  grid_->setFocus();
  EXPECT_EQ(grid_->item(0, 1)->text(), "q");
  EXPECT_FALSE(box_->isVisible());
  EXPECT_EQ(grid_->currentRow(), 2);
}

TEST_F(GridTest, AnInputMethodComposesInTheBox) {
  QInputMethodEvent composing("かん", {});
  QApplication::sendEvent(grid_, &composing);
  EXPECT_TRUE(box_->isVisible());
  QInputMethodEvent done;
  done.setCommitString("漢");
  QApplication::sendEvent(box_, &done);
  EXPECT_EQ(commands_->bands.text(), "漢");
  QTest::keyClick(box_, Qt::Key_Return);
  EXPECT_EQ(grid_->item(0, 1)->text(), "漢");
}

}  // namespace
}  // namespace tobarine
