#include "editors/qt/save_dialog.h"

#include <QFileDialog>
#include <QRegularExpression>

namespace tobarine {

std::optional<std::filesystem::path> choose_new_file(QWidget* parent, const QString& title,
                                                     const std::filesystem::path& proposed,
                                                     const QString& filters) {
  QFileDialog dialog(parent, title, QString::fromStdU16String(proposed.parent_path().u16string()),
                     filters);
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  const auto use_ending = [&dialog](const QString& filter) {
    static const QRegularExpression ending(R"(\*\.(\w+))");
    dialog.setDefaultSuffix(ending.match(filter).captured(1));
  };
  QObject::connect(&dialog, &QFileDialog::filterSelected, use_ending);
  use_ending(filters);
  dialog.selectFile(QString::fromStdU16String(proposed.filename().u16string()));
  if (dialog.exec() != QDialog::Accepted) return std::nullopt;
  return std::filesystem::path(dialog.selectedFiles().value(0).toStdU16String());
}

}  // namespace tobarine
