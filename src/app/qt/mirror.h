// Makes a widget or an action show what a Control says.
#pragma once

#include <QLabel>
#include <QObject>
#include <QString>

#include "app/controls.h"

namespace tobarine {

// The text of a control for Qt: LF line ends, nothing that is obeyed instead of shown.
QString shown_text(const Control& control);

// A colour of the palette on this background: as it is on light ones, on dark ones lightened until
// it can be read. Black is the style's own colour and not asked for.
QColor shown_colour(Colour colour, const QColor& background);

// How far two colours are apart for the eye, 1 .. 21.
double contrast(const QColor& a, const QColor& b);

// What can have a tool tip, a state of its own and a colour gets them; signals stay quiet. `object`
// may be a button, a label, a line edit, a combo box, a group box or an action. `access_key` is the
// letter of the caption that is underlined, or 0.
void mirror_control(QObject& object, const Control& control, QChar access_key = {});

// A label for a path: what does not fit is left out in the middle, the tool tip has it all.
class PathLabel : public QLabel {
 public:
  using QLabel::QLabel;

 protected:
  void paintEvent(QPaintEvent* event) override;
  QSize minimumSizeHint() const override;
};

}  // namespace tobarine
