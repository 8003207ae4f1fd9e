// The window in which a converted file is corrected by hand.
#pragma once

#include <QMainWindow>
#include <QPlainTextEdit>
#include <filesystem>

#include "editors/file_editor.h"

namespace tobarine {

class FileEditorView : public QMainWindow {
 public:
  // Throws FileError when the file cannot be loaded; then there is no window.
  explicit FileEditorView(const std::filesystem::path& file);

  // Asks about changes that are not saved; false: the user wants to stay.
  bool may_close();

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  bool save();
  QString text() const;
  void add_menus();

  FileEditor editor_;
  QPlainTextEdit* edit_;
};

}  // namespace tobarine
