// A grid of the main window and its text box, drawn from a GridEditor and giving it what the user
// does.
#pragma once

#include <QLineEdit>
#include <QTableWidget>

#include "editors/grid_editor.h"

namespace tobarine {

class GridView : public QTableWidget {
 public:
  // `box_name` is the text box's object name; `widths` are the columns' widths in pixels. The
  // editor must live as long.
  GridView(GridEditor& editor, const QString& box_name, const QList<int>& widths, QWidget* parent);

  void mirror();  // shows the editor's state
  void widen_columns();
  QLineEdit* box() const { return box_; }

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void inputMethodEvent(QInputMethodEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void scrollContentsBy(int dx, int dy) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void show_cell(int row, int column);
  void lay_box_over_cell();

  GridEditor& editor_;
  QLineEdit* box_;
  bool mirroring_ = false;
};

}  // namespace tobarine
