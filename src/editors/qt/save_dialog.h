// Asks for the file that something is to be written to.
#pragma once

#include <QWidget>
#include <filesystem>
#include <optional>

namespace tobarine {

// `filters` as file dialogs have them ("CSV (*.csv);;…"). A name without an ending gets that of the
// chosen filter, and what exists is replaced only when the user has said so. Nothing: cancelled.
std::optional<std::filesystem::path> choose_new_file(QWidget* parent, const QString& title,
                                                     const std::filesystem::path& proposed,
                                                     const QString& filters);

}  // namespace tobarine
