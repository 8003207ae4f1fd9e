// Where a window stands first, on screens of any size.
#pragma once

#include <QScreen>
#include <QWidget>

namespace tobarine {

inline void resize_within_screen(QWidget& window, const QSize& wanted) {
  const QSize frame(16, 48);  // what the window manager and the task bar take
  window.resize(wanted.boundedTo(window.screen()->availableSize() - frame));
}

// The place for a window of at most the wanted size on the side of another where there is most
// room, so that neither hides the other; where no side has enough, at the foot of the screen.
QRect place_beside(const QRect& screen, const QRect& other, const QSize& wanted);

// Puts a window that is not shown yet beside another.
void stand_beside(QWidget& window, const QWidget& other);

}  // namespace tobarine
