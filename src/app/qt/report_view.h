// The window that tells what a run left out or found doubtful.
#pragma once

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QTreeWidget>
#include <cstddef>
#include <filesystem>
#include <functional>

#include "convert/report.h"

namespace tobarine {

class ReportView : public QMainWindow {
 public:
  // `show_line` is called with `input` and a line of it when the user chooses one of its findings.
  using ShowLine = std::function<void(const std::filesystem::path&, std::size_t)>;
  ReportView(const ConversionReport& report, const std::filesystem::path& input,
             ShowLine show_line);

  // Writes the report: as a table when the name ends in ".csv", else as lines. Throws FileError.
  void save(const std::filesystem::path& file) const;

 private:
  void add_rows();
  void add_menus();
  void ask_and_save();
  void filter();
  void choose(const QTreeWidgetItem& item);
  void show_advice();

  ConversionReport report_;
  std::filesystem::path input_;
  ShowLine show_line_;
  QComboBox* kinds_;
  QLineEdit* wanted_;
  QLabel* advice_;  // on the kind of the finding that is chosen
  QTreeWidget* tree_;
};

}  // namespace tobarine
