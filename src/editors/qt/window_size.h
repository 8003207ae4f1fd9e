// A window's first size, on screens of any size.
#pragma once

#include <QScreen>
#include <QWidget>

namespace tobarine {

inline void resize_within_screen(QWidget& window, const QSize& wanted) {
  const QSize frame(16, 48);  // what the window manager and the task bar take
  window.resize(wanted.boundedTo(window.screen()->availableSize() - frame));
}

}  // namespace tobarine
