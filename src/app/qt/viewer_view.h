// The window that shows a text file line by line, however long it is.
#pragma once

#include <QAbstractListModel>
#include <QListView>
#include <QMainWindow>
#include <filesystem>
#include <memory>
#include <utility>

#include "app/list_box.h"
#include "editors/qt/find_bar.h"
#include "text/line_index.h"

namespace tobarine {

// The lines of a file for a list view; only those that are looked at are read.
class LineModel : public QAbstractListModel {
 public:
  using QAbstractListModel::QAbstractListModel;

  void set_lines(std::unique_ptr<LineIndex> lines);
  void set_line_size(const QSize& size);
  const LineIndex* lines() const { return lines_.get(); }

  int rowCount(const QModelIndex& parent) const override;
  QVariant data(const QModelIndex& index, int role) const override;

 private:
  std::unique_ptr<LineIndex> lines_;
  QSize line_size_;
};

// The list view as the list box that ListBoxHS serves. Line numbers stand in front of the lines.
class LineList : public QListView, public ListBox {
 public:
  explicit LineList(QWidget* parent);

  // Throws FileError, RecordError.
  void load(const std::filesystem::path& file);
  LineModel& lines() { return model_; }
  ListBoxHS& scroll_range() { return scroll_range_; }

  void add(std::string_view line, std::optional<std::size_t> position) override;
  int width_twips() const override;
  int twips_per_pixel_y() const override;
  int text_width(std::size_t bytes) const override;
  void set_horizontal_extent(int pixels) override;

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  LineModel model_;
  ListBoxHS scroll_range_{*this};
  int byte_width_;        // of one byte of text in the list's font, pixels
  int number_width_ = 0;  // of the line numbers
};

class ViewerView : public QMainWindow {
 public:
  // Throws FileError, RecordError; then there is no window.
  explicit ViewerView(const std::filesystem::path& file);

  const std::filesystem::path& file() const { return file_; }
  void go_to_line(std::size_t line);  // from 1; 0: stays
  void reload();                      // when the file has changed; throws FileError, RecordError

 private:
  Found find(const QString& text, bool backwards);

  std::filesystem::path file_;
  std::pair<std::uintmax_t, std::filesystem::file_time_type> version_;  // of what is shown
  LineList* list_;
};

}  // namespace tobarine
