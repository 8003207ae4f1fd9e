// The window in which a converted file is corrected by hand.
#pragma once

#include <QLabel>
#include <QMainWindow>
#include <QPlainTextEdit>
#include <filesystem>
#include <functional>

#include "editors/file_editor.h"
#include "editors/qt/find_bar.h"

namespace tobarine {

class FileEditorView : public QMainWindow {
 public:
  // Throws FileError when the file cannot be loaded; then there is no window.
  explicit FileEditorView(const std::filesystem::path& file);

  const std::filesystem::path& file() const { return editor_.file(); }

  // Asks about changes that are not saved; false: the user wants to stay.
  bool may_close();

  // Saves under another name, which is the window's from now on; false: that failed.
  bool save_as(const std::filesystem::path& file);

  std::function<void(const std::filesystem::path&)> wants_to_open;  // a file that was dropped here

 protected:
  void closeEvent(QCloseEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  bool save();
  void ask_and_save_as();
  void show_saved(const FileEditor::Saved& saved, const std::string& done);
  Found find(const QString& text, bool backwards);
  QString text() const;
  void add_menus();
  QWidget* build_rest();

  FileEditor editor_;
  QPlainTextEdit* edit_;
  QWidget* rest_ = nullptr;  // shown while old content stands behind the text's end
  QLabel* rest_text_ = nullptr;
};

}  // namespace tobarine
