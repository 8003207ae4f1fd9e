#include "app/qt/mirror.h"

#include <QAbstractButton>
#include <QAction>
#include <QComboBox>
#include <QGroupBox>
#include <QLineEdit>
#include <QPainter>
#include <QSignalBlocker>

namespace tobarine {
namespace {

QColor shown_colour(Colour colour, const QPalette& palette) {
  switch (colour) {
    case Colour::kLightBlue:
      return {0, 0, 255};
    case Colour::kLightRed:
      return {200, 0, 0};
    default:
      return palette.color(QPalette::Active, QPalette::WindowText);
  }
}

void set_colour(QWidget& widget, Colour colour) {
  QPalette palette = widget.palette();
  const QColor wanted = shown_colour(
      colour, widget.parentWidget() == nullptr ? palette : widget.parentWidget()->palette());
  if (palette.color(QPalette::Active, QPalette::WindowText) == wanted) return;
  for (const auto group : {QPalette::Active, QPalette::Inactive}) {
    palette.setColor(group, QPalette::WindowText, wanted);
  }
  widget.setPalette(palette);
}

QString with_access_key(QString text, QChar key) {
  if (!key.isNull()) {
    if (const auto at = text.indexOf(key); at >= 0) text.insert(at, '&');
  }
  return text;
}

void mirror_widget(QWidget& widget, const Control& control) {
  widget.setEnabled(control.enabled);
  widget.setVisible(control.visible);
  if (!control.tip.empty()) widget.setToolTip(QString::fromStdString(control.tip));
}

}  // namespace

QString shown_text(const Control& control) {
  return QString::fromStdString(control.text).replace("\r\n", "\n");
}

void mirror_control(QObject& object, const Control& control, QChar access_key) {
  if (auto* const action = qobject_cast<QAction*>(&object)) {
    action->setEnabled(control.enabled);
    action->setVisible(control.visible);
    return;
  }
  auto* const widget = qobject_cast<QWidget*>(&object);
  if (widget == nullptr) return;
  const QSignalBlocker quiet(widget);
  const QString text = shown_text(control);
  mirror_widget(*widget, control);
  if (auto* const button = qobject_cast<QAbstractButton*>(widget)) {
    const QString caption = with_access_key(text, access_key);
    if (button->text() != caption) button->setText(caption);
    button->setChecked(control.checked);
    set_colour(*button, control.colour);
  } else if (auto* const label = qobject_cast<QLabel*>(widget)) {
    if (label->text() != text) label->setText(text);
    set_colour(*label, control.colour);
  } else if (auto* const edit = qobject_cast<QLineEdit*>(widget)) {
    if (edit->text() != text) edit->setText(text);
    edit->setReadOnly(control.read_only);
  } else if (auto* const combo = qobject_cast<QComboBox*>(widget)) {
    combo->setCurrentText(text);
  } else if (auto* const group = qobject_cast<QGroupBox*>(widget)) {
    group->setTitle(text);
  }
}

void PathLabel::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  const QRect area = contentsRect();
  setToolTip(text());
  style()->drawItemText(
      &painter, area, static_cast<int>(Qt::AlignLeft | Qt::AlignVCenter), palette(), isEnabled(),
      fontMetrics().elidedText(text(), Qt::ElideMiddle, area.width()), QPalette::WindowText);
}

QSize PathLabel::minimumSizeHint() const {
  return {0, QLabel::minimumSizeHint().height()};
}

}  // namespace tobarine
