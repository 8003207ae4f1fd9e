#include "editors/qt/grid_view.h"

#include <QCoreApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <algorithm>
#include <optional>
#include <utility>

namespace tobarine {
namespace {

// The keys that move on from the text box.
std::optional<GridEditor::Key> editing_key(int key) {
  switch (key) {
    case Qt::Key_Escape:
      return GridEditor::Key::kEscape;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      return GridEditor::Key::kEnter;
    case Qt::Key_Tab:
      return GridEditor::Key::kTab;
    case Qt::Key_Up:
      return GridEditor::Key::kUp;
    case Qt::Key_Down:
      return GridEditor::Key::kDown;
    default:
      return std::nullopt;
  }
}

}  // namespace

GridView::GridView(GridEditor& editor, const QString& box_name, const QList<int>& widths,
                   QWidget* parent)
    : QTableWidget(static_cast<int>(editor.rows()) - 1, static_cast<int>(editor.columns()), parent),
      editor_(editor),
      box_(new QLineEdit(viewport())) {
  setEditTriggers(NoEditTriggers);
  setSelectionMode(SingleSelection);
  setTabKeyNavigation(false);
  setAttribute(Qt::WA_InputMethodEnabled);
  viewport()->setAttribute(Qt::WA_InputMethodEnabled);
  verticalHeader()->hide();
  constexpr int kRowMargin = 6;
  verticalHeader()->setDefaultSectionSize(fontMetrics().height() + kRowMargin);
  for (int column = 0; column < columnCount(); ++column) {
    setHorizontalHeaderItem(column, new QTableWidgetItem(QString::fromStdString(
                                        editor_.cell(0, static_cast<std::size_t>(column)))));
    setColumnWidth(column, widths[column]);
    for (int row = 0; row < rowCount(); ++row) setItem(row, column, new QTableWidgetItem);
  }
  horizontalHeader()->setStretchLastSection(true);
  horizontalHeader()->setHighlightSections(false);
  horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  box_->setObjectName(box_name);
  box_->setAccessibleName("セルの編集");
  box_->setFrame(false);
  box_->setAcceptDrops(false);  // a file that is dropped is opened by the window
  box_->setStyleSheet("background: yellow; color: black");
  box_->installEventFilter(this);
  box_->hide();
  connect(box_, &QLineEdit::textChanged, this, [this](const QString& text) {
    if (!mirroring_) editor_.set_text(text.toStdString());
  });
  connect(this, &QTableWidget::currentCellChanged, this, [this](int row, int column) {
    if (mirroring_ || row < 0 || column < 0) return;
    editor_.go_to(static_cast<std::size_t>(row) + 1, static_cast<std::size_t>(column));
  });
  mirror();
}

// The columns are as wide as they always were, or as what they hold needs.
void GridView::widen_columns() {
  constexpr int kMargin = 8;
  for (int column = 0; column + 1 < columnCount(); ++column) {
    setColumnWidth(column, std::max(columnWidth(column), sizeHintForColumn(column) + kMargin));
  }
}

// Numbers stand on grey; a row that is not saved is grey altogether.
void GridView::show_cell(int row, int column) {
  const auto [editor_row, editor_column] =
      std::pair(static_cast<std::size_t>(row) + 1, static_cast<std::size_t>(column));
  const bool usable = editor_.usable(editor_row, editor_column);
  const bool saved = editor_.usable(editor_row, 1);
  QTableWidgetItem& cell = *item(row, column);
  cell.setText(QString::fromStdString(editor_.cell(editor_row, editor_column)));
  // Nothing set: the style's own colour, which follows the theme and a run.
  const QBrush grey = palette().brush(QPalette::Disabled, QPalette::Text);
  cell.setData(Qt::ForegroundRole, saved ? QVariant() : QVariant(grey));
  cell.setBackground(palette().brush(usable ? QPalette::Base : QPalette::Window));
  if (!saved) cell.setToolTip("この行は保存されません");
}

void GridView::mirror() {
  mirroring_ = true;
  for (int row = 0; row < rowCount(); ++row) {
    for (int column = 0; column < columnCount(); ++column) show_cell(row, column);
  }
  setCurrentCell(static_cast<int>(editor_.row()) - 1, static_cast<int>(editor_.column()));
  if (editor_.editing()) {
    if (box_->text().toStdString() != editor_.text()) {
      box_->setText(QString::fromStdString(editor_.text()));
    }
    if (!box_->isVisible()) box_->end(false);
    lay_box_over_cell();
    box_->show();
    box_->setFocus();
  } else {
    box_->hide();
  }
  mirroring_ = false;
}

void GridView::lay_box_over_cell() {
  box_->setGeometry(visualItemRect(currentItem()));
}

void GridView::keyPressEvent(QKeyEvent* event) {
  const QString typed = event->text();
  const bool plain = (event->modifiers() & (Qt::ControlModifier | Qt::AltModifier)) == 0;
  if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter ||
      event->key() == Qt::Key_F2) {
    editor_.open();
    mirror();
  } else if (plain && !typed.isEmpty() && typed[0].isPrint() && editor_.type(typed.toStdString())) {
    mirror();
  } else {
    QTableWidget::keyPressEvent(event);
  }
}

void GridView::mouseDoubleClickEvent(QMouseEvent* event) {
  QTableWidget::mouseDoubleClickEvent(event);
  editor_.open();
  mirror();
}

// The input method composes in the text box, not on the grid.
void GridView::inputMethodEvent(QInputMethodEvent* event) {
  if (event->commitString().isEmpty() && event->preeditString().isEmpty()) return;
  const bool opened = editor_.open();
  editor_.set_text("");
  mirror();
  if (opened) QCoreApplication::sendEvent(box_, event);
}

void GridView::focusInEvent(QFocusEvent* event) {
  QTableWidget::focusInEvent(event);
  if (!editor_.editing()) return;
  editor_.grid_focused();
  mirror();
}

void GridView::scrollContentsBy(int dx, int dy) {
  QTableWidget::scrollContentsBy(dx, dy);
  if (editor_.editing()) lay_box_over_cell();
}

bool GridView::eventFilter(QObject* watched, QEvent* event) {
  if (watched == box_ && event->type() == QEvent::KeyPress) {
    const auto key = editing_key(static_cast<QKeyEvent*>(event)->key());
    if (key) {
      editor_.press(*key);
      mirror();
      setFocus();
      return true;
    }
  }
  return QTableWidget::eventFilter(watched, event);
}

}  // namespace tobarine
