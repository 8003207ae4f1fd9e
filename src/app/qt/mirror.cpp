#include "app/qt/mirror.h"

#include <QAbstractButton>
#include <QAction>
#include <QComboBox>
#include <QGroupBox>
#include <QLineEdit>
#include <QPainter>
#include <QSignalBlocker>
#include <algorithm>
#include <cmath>

#include "editors/qt/plain_text.h"

namespace tobarine {
namespace {

// The relative luminance of a colour, 0 .. 1.
double luminance(const QColor& colour) {
  const auto linear = [](double part) {
    return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
         0.0722 * linear(colour.blueF());
}

void set_colour(QWidget& widget, Colour colour) {
  if (colour == Colour::kBlack) {
    widget.setPalette(QPalette());
    return;
  }
  const QWidget& ground = widget.parentWidget() == nullptr ? widget : *widget.parentWidget();
  const QColor wanted = shown_colour(colour, ground.palette().color(QPalette::Window));
  QPalette palette = widget.palette();
  if (palette.color(QPalette::Active, QPalette::WindowText) == wanted) return;
  for (const auto group : {QPalette::Active, QPalette::Inactive}) {
    palette.setColor(group, QPalette::WindowText, wanted);
    palette.setColor(group, QPalette::ButtonText, wanted);
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
  if (!control.tip.empty()) widget.setToolTip(plain_tip(shown_lines(control.tip)));
}

}  // namespace

QString shown_text(const Control& control) {
  return shown_lines(control.text);
}

double contrast(const QColor& a, const QColor& b) {
  const double of_a = luminance(a) + 0.05;
  const double of_b = luminance(b) + 0.05;
  return std::max(of_a, of_b) / std::min(of_a, of_b);
}

QColor shown_colour(Colour colour, const QColor& background) {
  constexpr double kReadable = 4.5;
  constexpr double kDark = 0.18;  // luminance; below it white can be read better than black
  QColor shown = colour == Colour::kLightBlue ? QColor(0, 0, 255) : QColor(255, 0, 0);
  if (luminance(background) >= kDark) return shown;
  constexpr int kStep = 8;
  while (contrast(shown, background) < kReadable && shown != QColor(Qt::white)) {
    const auto lighter = [](int part) { return std::min(part + kStep, 255); };
    shown.setRgb(lighter(shown.red()), lighter(shown.green()), lighter(shown.blue()));
  }
  return shown;
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
    label->setTextFormat(Qt::PlainText);
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
  setToolTip(plain_tip(text()));
  style()->drawItemText(
      &painter, area, static_cast<int>(Qt::AlignLeft | Qt::AlignVCenter), palette(), isEnabled(),
      fontMetrics().elidedText(text(), Qt::ElideMiddle, area.width()), QPalette::WindowText);
}

QSize PathLabel::minimumSizeHint() const {
  return {0, QLabel::minimumSizeHint().height()};
}

}  // namespace tobarine
