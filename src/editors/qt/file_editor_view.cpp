#include "editors/qt/file_editor_view.h"

#include <QAbstractButton>
#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QFontDatabase>
#include <QHBoxLayout>
#include <QMenuBar>
#include <QMimeData>
#include <QPushButton>
#include <QShortcut>
#include <QTextBlock>

#include "editors/qt/plain_text.h"
#include "editors/qt/save_dialog.h"
#include "editors/qt/window_size.h"
#include "text/error.h"

namespace tobarine {
namespace {

constexpr const char* kSaveAs = "新しいファイルとして保存…";

// Leaves files that are dropped on it to the window.
class TextBox : public QPlainTextEdit {
 public:
  using QPlainTextEdit::QPlainTextEdit;

 protected:
  bool canInsertFromMimeData(const QMimeData* source) const override {
    return !source->hasUrls() && QPlainTextEdit::canInsertFromMimeData(source);
  }
};

std::string rest_note(std::uintmax_t bytes) {
  return "元の文の終わりの " + std::to_string(bytes) + " バイトがファイルの後ろに残っています。";
}

}  // namespace

FileEditorView::FileEditorView(const std::filesystem::path& file)
    : editor_(file), edit_(new TextBox(this)) {
  setObjectName("Hamlog_csv_Edit");
  setWindowTitle(shown_line(editor_.caption()));
  setAcceptDrops(true);
  edit_->setObjectName("Text1");
  edit_->setAccessibleName("ファイルの内容");
  edit_->setLineWrapMode(QPlainTextEdit::NoWrap);
  edit_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  edit_->setPlainText(QString::fromStdString(editor_.text()));
  if (text().toStdString() != editor_.text()) {
    // Saving would change them.
    throw FileError(file, "ここでは編集できない制御文字があります。ほかのエディターで直して下さい");
  }
  edit_->document()->setModified(false);
  auto* const find_bar = new FindBar(
      [this](const QString& text, bool backwards) { return find(text, backwards); }, this);
  auto* const content = new QWidget(this);
  auto* const layout = new QVBoxLayout(content);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(0);
  layout->addWidget(edit_);
  layout->addWidget(build_rest());
  layout->addWidget(find_bar);
  setCentralWidget(content);
  add_menus();
  menuBar()->addAction("[ 検索 ]", QKeySequence::Find, find_bar, &FindBar::open);
  const auto* const escape = new QShortcut(Qt::Key_Escape, this);
  connect(escape, &QShortcut::activated, find_bar, &FindBar::close_bar);
  resize_within_screen(*this, {820, 560});
}

void FileEditorView::add_menus() {
  QAction* const save_action = menuBar()->addAction("[ 上書き保存 ]", this, [this] { save(); });
  save_action->setObjectName("mnuSave");
  save_action->setShortcut(QKeySequence::Save);
  QAction* const save_as_action =
      menuBar()->addAction(QString("[ %1 ]").arg(kSaveAs), this, [this] { ask_and_save_as(); });
  save_as_action->setObjectName("mnuSaveAs");
  QAction* const back = menuBar()->addAction("[ 戻る ]", this, &QWidget::close);
  back->setObjectName("mnuBack");
  QAction* const undo = menuBar()->addAction("[ 元に戻す ]", edit_, &QPlainTextEdit::undo);
  undo->setObjectName("mnuUndo");
  undo->setEnabled(false);
  connect(edit_, &QPlainTextEdit::undoAvailable, undo, &QAction::setEnabled);
}

QWidget* FileEditorView::build_rest() {
  rest_ = new QWidget(this);
  rest_->setObjectName("Rest");
  rest_text_ = new QLabel(rest_);
  rest_text_->setObjectName("lblRest");
  rest_text_->setTextFormat(Qt::PlainText);
  rest_text_->setWordWrap(true);
  auto* const save_as_button = new QPushButton(kSaveAs, rest_);
  save_as_button->setAutoDefault(true);  // Enter presses it
  connect(save_as_button, &QPushButton::clicked, this, [this] { ask_and_save_as(); });
  auto* const layout = new QHBoxLayout(rest_);
  layout->setContentsMargins(6, 3, 6, 3);
  layout->addWidget(rest_text_, 1);
  layout->addWidget(save_as_button);
  rest_->hide();
  return rest_;
}

// As it stands in the document: toPlainText() would turn some characters into others.
QString FileEditorView::text() const {
  QString result = edit_->document()->toRawText();
  return result.replace(QChar::ParagraphSeparator, '\n');
}

bool FileEditorView::save() {
  try {
    show_saved(editor_.save(text().toStdString()), "上書き保存完了！");
    return true;
  } catch (const Error& error) {
    message_box(this, QMessageBox::Critical, "Tobarine", error.what())->exec();
    return false;
  }
}

bool FileEditorView::save_as(const std::filesystem::path& file) {
  try {
    const FileEditor::Saved saved = editor_.save_as(file, text().toStdString());
    setWindowTitle(shown_line(editor_.caption()));
    show_saved(saved, "保存しました: " + path_text(file));
    return true;
  } catch (const Error& error) {
    message_box(this, QMessageBox::Critical, "Tobarine", error.what())->exec();
    return false;
  }
}

void FileEditorView::ask_and_save_as() {
  std::filesystem::path proposed = editor_.file();
  proposed.replace_filename(proposed.stem());
  proposed += "_2";
  proposed += editor_.file().extension();
  const auto file = choose_new_file(this, "新しいファイルとして保存", proposed,
                                    "CSV (*.csv);;zLog ALL (*.all);;すべてのファイル (*)");
  if (file) save_as(*file);
}

// Says what the file holds now, and goes on saying so while it holds more than the window shows.
void FileEditorView::show_saved(const FileEditor::Saved& saved, const std::string& done) {
  edit_->document()->setModified(false);
  rest_text_->setText(QString::fromStdString(rest_note(saved.behind)));
  rest_->setVisible(saved.behind > 0);
  std::string text = done;
  if (saved.lacking > 0) {
    text += "\nShift-JIS で書けない文字が " + std::to_string(saved.lacking) +
            " 文字あり、\"?\" にしました。";
  }
  if (saved.behind > 0) {
    text += "\n\n" + rest_note(saved.behind) +
            "\n(上書き保存ではファイルは短くなりません)\n"
            "この窓に見える文だけのファイルにするには、\n「" +
            kSaveAs + "」を押して下さい。";
  }
  const auto box = message_box(this, QMessageBox::Information, "Tobarine", text);
  const QAbstractButton* const as_new =
      saved.behind == 0 ? nullptr : box->addButton(kSaveAs, QMessageBox::ActionRole);
  box->setEscapeButton(QMessageBox::Ok);
  box->exec();
  if (as_new != nullptr && box->clickedButton() == as_new) ask_and_save_as();
}

Found FileEditorView::find(const QString& text, bool backwards) {
  const auto flags = backwards ? QTextDocument::FindBackward : QTextDocument::FindFlags();
  if (edit_->find(text, flags)) return Found::kAhead;
  const QTextCursor here = edit_->textCursor();
  edit_->moveCursor(backwards ? QTextCursor::End : QTextCursor::Start);
  if (edit_->find(text, flags)) return Found::kAfterWrap;
  edit_->setTextCursor(here);
  return Found::kNowhere;
}

bool FileEditorView::may_close() {
  if (!edit_->document()->isModified()) return true;
  const auto box = message_box(this, QMessageBox::Question, "Tobarine",
                               "変更が保存されていません。上書き保存しますか？",
                               QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel);
  box->setDefaultButton(QMessageBox::Save);
  box->button(QMessageBox::Save)->setText("上書き保存");
  box->button(QMessageBox::Discard)->setText("保存しない");
  box->button(QMessageBox::Cancel)->setText("やめる");
  const int answer = box->exec();
  if (answer == QMessageBox::Save) return save();
  if (answer == QMessageBox::Cancel) return false;
  edit_->document()->setModified(false);
  return true;
}

void FileEditorView::closeEvent(QCloseEvent* event) {
  event->setAccepted(may_close());
}

void FileEditorView::dragEnterEvent(QDragEnterEvent* event) {
  if (event->mimeData()->hasUrls()) event->acceptProposedAction();
}

void FileEditorView::dropEvent(QDropEvent* event) {
  const QList<QUrl> urls = event->mimeData()->urls();
  if (urls.isEmpty() || !urls[0].isLocalFile() || !wants_to_open) return;
  wants_to_open(urls[0].toLocalFile().toStdU16String());
  event->acceptProposedAction();
}

}  // namespace tobarine
