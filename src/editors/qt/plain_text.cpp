#include "editors/qt/plain_text.h"

#include <QTextDocument>

#include "text/printable.h"

namespace tobarine {

QString shown_line(std::string_view utf8) {
  return QString::fromStdString(printable(utf8));
}

QString shown_lines(std::string_view utf8) {
  return QString::fromStdString(printable_lines(utf8));
}

QString plain_tip(const QString& text) {
  return Qt::mightBeRichText(text) ? text.toHtmlEscaped() : text;
}

std::unique_ptr<QMessageBox> message_box(QWidget* parent, QMessageBox::Icon icon,
                                         std::string_view title, std::string_view text,
                                         QMessageBox::StandardButtons buttons) {
  auto box =
      std::make_unique<QMessageBox>(icon, shown_lines(title), shown_lines(text), buttons, parent);
  box->setTextFormat(Qt::PlainText);
  return box;
}

}  // namespace tobarine
