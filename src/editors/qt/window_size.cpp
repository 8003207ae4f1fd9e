#include "editors/qt/window_size.h"

namespace tobarine {

QRect place_beside(const QRect& screen, const QRect& other, const QSize& wanted) {
  const QSize least(360, 200);
  QRect best;
  const auto consider = [&](const QRect& side, Qt::Alignment towards) {
    const QSize size = wanted.boundedTo(side.size());
    if (size.width() < least.width() || size.height() < least.height()) return;
    if (size.width() * size.height() <= best.width() * best.height()) return;
    best = QRect(side.topLeft(), size);
    if (towards == Qt::AlignRight) best.moveRight(side.right());
    if (towards == Qt::AlignBottom) best.moveBottom(side.bottom());
  };
  const int top = qBound(screen.top(), other.top(), screen.bottom());
  const int left = qBound(screen.left(), other.left(), screen.right());
  consider({QPoint(other.right() + 1, top), screen.bottomRight()}, Qt::AlignLeft);
  consider({QPoint(screen.left(), top), QPoint(other.left() - 1, screen.bottom())}, Qt::AlignRight);
  consider({QPoint(left, other.bottom() + 1), screen.bottomRight()}, Qt::AlignTop);
  consider({QPoint(left, screen.top()), QPoint(screen.right(), other.top() - 1)}, Qt::AlignBottom);
  if (!best.isNull()) return best;
  const QSize size = wanted.boundedTo({screen.width(), screen.height() / 2});
  return {QPoint(screen.right() - size.width() + 1, screen.bottom() - size.height() + 1), size};
}

void stand_beside(QWidget& window, const QWidget& other) {
  const QRect with_frame = other.frameGeometry();
  const QSize frame = with_frame.size() - other.size();
  const QRect place =
      place_beside(other.screen()->availableGeometry(), with_frame, window.size() + frame);
  window.resize(place.size() - frame);
  window.move(place.topLeft());
}

}  // namespace tobarine
