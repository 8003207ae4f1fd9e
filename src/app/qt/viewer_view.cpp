#include "app/qt/viewer_view.h"

#include <QFontDatabase>
#include <QMenuBar>
#include <QPainter>
#include <QShortcut>
#include <QStyledItemDelegate>
#include <QVBoxLayout>
#include <system_error>

#include "app/controls.h"
#include "editors/qt/plain_text.h"
#include "editors/qt/window_size.h"
#include "text/error.h"

namespace tobarine {
namespace {

constexpr int kNumberGap = 12;  // pixels behind the line numbers

// Draws a line with its number in front.
class LineDelegate : public QStyledItemDelegate {
 public:
  LineDelegate(const int& number_width, QObject* parent)
      : QStyledItemDelegate(parent), number_width_(number_width) {}

  void paint(QPainter* painter, const QStyleOptionViewItem& option,
             const QModelIndex& index) const override {
    QStyleOptionViewItem text = option;
    text.rect.setLeft(option.rect.left() + number_width_ + kNumberGap);
    QStyledItemDelegate::paint(painter, text, index);
    QRect number = option.rect;
    number.setWidth(number_width_);
    painter->save();
    painter->setFont(option.font);
    painter->setPen(option.palette.color(QPalette::PlaceholderText));
    painter->drawText(number, Qt::AlignRight | Qt::AlignVCenter, QString::number(index.row() + 1));
    painter->restore();
  }

 private:
  const int& number_width_;
};

// Size and time; another one: the file has been written meanwhile.
std::pair<std::uintmax_t, std::filesystem::file_time_type> version_of(
    const std::filesystem::path& file) {
  std::error_code error;
  const std::uintmax_t size = std::filesystem::file_size(file, error);
  return {size, std::filesystem::last_write_time(file, error)};
}

}  // namespace

void LineModel::set_lines(std::unique_ptr<LineIndex> lines) {
  beginResetModel();
  lines_ = std::move(lines);
  endResetModel();
}

void LineModel::set_line_size(const QSize& size) {
  line_size_ = size;
}

int LineModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() || !lines_ ? 0 : static_cast<int>(lines_->size());
}

QVariant LineModel::data(const QModelIndex& index, int role) const {
  if (role == Qt::SizeHintRole) return line_size_;
  if (role != Qt::DisplayRole) return {};
  try {
    return shown_line(lines_->line(static_cast<std::size_t>(index.row())));
  } catch (const Error& error) {
    return shown_line(error.what());
  }
}

LineList::LineList(QWidget* parent) : QListView(parent) {
  setObjectName("List1");
  setAccessibleName("ファイルの内容");
  setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  byte_width_ = fontMetrics().horizontalAdvance(QLatin1Char('0'));
  setUniformItemSizes(true);
  setHorizontalScrollMode(ScrollPerPixel);
  setItemDelegate(new LineDelegate(number_width_, this));
  setModel(&model_);
}

void LineList::load(const std::filesystem::path& file) {
  scroll_range_.auto_update = false;
  auto lines = std::make_unique<LineIndex>(
      file, [this](std::string_view line) { scroll_range_.add_line(line); });
  number_width_ = byte_width_ *
                  static_cast<int>(std::max<std::size_t>(4, std::to_string(lines->size()).size()));
  model_.set_lines(std::move(lines));
  scroll_range_.auto_update = true;
  scroll_range_.update_extent();
}

// The model has the lines from the file.
void LineList::add(std::string_view /*line*/, std::optional<std::size_t> /*position*/) {}

int LineList::width_twips() const {
  return (viewport()->width() - number_width_ - kNumberGap) * kTwipsPerPixel;
}

int LineList::twips_per_pixel_y() const {
  return kTwipsPerPixel;
}

// The font is of fixed pitch: a full-width character is as wide as the two bytes it takes.
int LineList::text_width(std::size_t bytes) const {
  return static_cast<int>(bytes) * byte_width_;
}

void LineList::set_horizontal_extent(int pixels) {
  const int width = pixels == 0 ? 0 : pixels + number_width_ + kNumberGap;
  model_.set_line_size({width, fontMetrics().height() + 2});
  scheduleDelayedItemsLayout();
}

void LineList::resizeEvent(QResizeEvent* event) {
  QListView::resizeEvent(event);
  scroll_range_.update_extent();
}

ViewerView::ViewerView(const std::filesystem::path& file)
    : file_(file), version_(version_of(file)), list_(new LineList(this)) {
  setObjectName("frmDisp2");
  setWindowTitle(shown_line(path_text(file)) + " - 表示");
  list_->load(file);
  auto* const find_bar = new FindBar(
      [this](const QString& text, bool backwards) { return find(text, backwards); }, this);
  auto* const line = new QFrame(this);  // parts the menu from the list
  line->setFrameShape(QFrame::HLine);
  auto* const content = new QWidget(this);
  auto* const layout = new QVBoxLayout(content);
  layout->setContentsMargins(3, 0, 3, 3);
  layout->setSpacing(2);
  layout->addWidget(line);
  layout->addWidget(list_);
  layout->addWidget(find_bar);
  setCentralWidget(content);
  QAction* const back = menuBar()->addAction("[ 戻る ]", this, &QWidget::close);
  back->setObjectName("mnuBack");
  const auto* const escape = new QShortcut(Qt::Key_Escape, this);
  connect(escape, &QShortcut::activated, this, [this, find_bar] {
    if (!find_bar->close_bar()) close();
  });
  menuBar()->addAction("[ 検索 ]", QKeySequence::Find, find_bar, &FindBar::open);
  resize_within_screen(*this, {820, 560});
}

void ViewerView::go_to_line(std::size_t line) {
  if (line == 0) return;
  const QModelIndex index = list_->model()->index(static_cast<int>(line) - 1, 0);
  list_->setCurrentIndex(index);
  list_->scrollTo(index, QAbstractItemView::PositionAtCenter);
}

void ViewerView::reload() {
  const auto version = version_of(file_);
  if (version == version_) return;
  const int row = list_->currentIndex().row();
  list_->load(file_);
  version_ = version;
  list_->setCurrentIndex(list_->model()->index(row, 0));
}

Found ViewerView::find(const QString& text, bool backwards) {
  const LineIndex& lines = *list_->lines().lines();
  const auto here = static_cast<std::size_t>(list_->currentIndex().row() + 1);  // from 1
  const std::string wanted = text.toStdString();
  const auto look = [&](std::size_t from, std::size_t before) {
    return backwards ? lines.find_last(wanted, before) : lines.find(wanted, from);
  };
  try {
    std::size_t found = look(here, here == 0 ? 0 : here - 1);
    const bool wraps = found >= lines.size();
    if (wraps) found = look(0, lines.size());
    if (found >= lines.size()) return Found::kNowhere;
    go_to_line(found + 1);
    return wraps ? Found::kAfterWrap : Found::kAhead;
  } catch (const Error&) {
    return Found::kNowhere;  // the file is gone
  }
}

}  // namespace tobarine
