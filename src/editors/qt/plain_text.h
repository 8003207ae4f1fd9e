// Texts that may come from files, shown as they are: never taken for HTML, and without control
// characters.
#pragma once

#include <QMessageBox>
#include <QString>
#include <memory>
#include <string_view>

namespace tobarine {

// UTF-8 for a widget: one line, or lines ended by LF.
QString shown_line(std::string_view utf8);
QString shown_lines(std::string_view utf8);

// A text for a tool tip, which has no way of its own to say that it is plain.
QString plain_tip(const QString& text);

// A message box that shows the text as plain text; the caller runs it.
std::unique_ptr<QMessageBox> message_box(QWidget* parent, QMessageBox::Icon icon,
                                         std::string_view title, std::string_view text,
                                         QMessageBox::StandardButtons buttons = QMessageBox::Ok);

}  // namespace tobarine
