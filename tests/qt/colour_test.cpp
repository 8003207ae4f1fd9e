// The shades of the window's texts.
#include "app/qt/mirror.h"
#include "qt/window_fixture.h"

namespace tobarine {
namespace {

TEST(ColourTest, WarningsCanBeReadOnEveryBackground) {
  EXPECT_EQ(shown_colour(Colour::kLightRed, Qt::white), QColor(255, 0, 0));
  EXPECT_EQ(shown_colour(Colour::kLightBlue, QColor("#efefef")), QColor(0, 0, 255));
  for (const char* dark :
       {"#000000", "#1e1e1e", "#232629", "#2d2d2d", "#31363b", "#353535", "#404244", "#4d4d4d"}) {
    const QColor red = shown_colour(Colour::kLightRed, QColor(dark));
    const QColor blue = shown_colour(Colour::kLightBlue, QColor(dark));
    EXPECT_GE(contrast(red, QColor(dark)), 4.5) << dark;
    EXPECT_GE(contrast(blue, QColor(dark)), 4.5) << dark;
    EXPECT_TRUE(red.red() > red.blue() && blue.blue() > blue.red()) << dark;
  }
  EXPECT_NEAR(contrast(Qt::black, Qt::white), 21, 0.01);
}

TEST_F(WindowTest, AnotherThemeGetsItsOwnShades) {
  const QPalette before = QApplication::palette();
  QPalette dark = before;
  dark.setColor(QPalette::Window, QColor("#202020"));
  dark.setColor(QPalette::WindowText, Qt::white);
  QApplication::setPalette(dark);
  const auto text_colour = [&](const char* name) {
    return find<QWidget>(name)->palette().color(QPalette::Active, QPalette::WindowText);
  };
  EXPECT_TRUE(QTest::qWaitFor(
      [&] { return contrast(text_colour("lblInFile"), QColor("#202020")) >= 4.5; }));
  EXPECT_GE(contrast(text_colour("Check1"), QColor("#202020")), 4.5);
  EXPECT_EQ(text_colour("Check3"), QColor(Qt::white));
  QApplication::setPalette(before);
}

}  // namespace
}  // namespace tobarine
