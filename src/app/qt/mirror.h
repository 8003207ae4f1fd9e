// Makes a widget or an action show what a Control says.
#pragma once

#include <QLabel>
#include <QObject>
#include <QString>

#include "app/controls.h"

namespace tobarine {

// The text of a control for Qt: LF line ends.
QString shown_text(const Control& control);

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
