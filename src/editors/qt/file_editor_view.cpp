#include "editors/qt/file_editor_view.h"

#include <QCloseEvent>
#include <QFontDatabase>
#include <QMenuBar>
#include <QMessageBox>
#include <QShortcut>
#include <QTextBlock>
#include <QVBoxLayout>

#include "editors/qt/find_bar.h"
#include "editors/qt/window_size.h"
#include "text/error.h"

namespace tobarine {

FileEditorView::FileEditorView(const std::filesystem::path& file)
    : editor_(file), edit_(new QPlainTextEdit(this)) {
  setObjectName("Hamlog_csv_Edit");
  setWindowTitle(QString::fromStdString(editor_.caption()));
  edit_->setObjectName("Text1");
  edit_->setAccessibleName("ファイルの内容");
  edit_->setLineWrapMode(QPlainTextEdit::NoWrap);
  edit_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  edit_->setPlainText(QString::fromStdString(editor_.text()));
  if (text().toStdString() != editor_.text()) {
    throw FileError(file, "編集できない制御文字があります");  // saving would change them
  }
  edit_->document()->setModified(false);
  auto* const find = new FindBar(
      [this](const QString& text, bool backwards) {
        const auto flags = backwards ? QTextDocument::FindBackward : QTextDocument::FindFlags();
        return edit_->find(text, flags);
      },
      this);
  auto* const content = new QWidget(this);
  auto* const layout = new QVBoxLayout(content);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(0);
  layout->addWidget(edit_);
  layout->addWidget(find);
  setCentralWidget(content);
  add_menus();
  menuBar()->addAction("[ 検索 ]", QKeySequence::Find, find, &FindBar::open);
  const auto* const escape = new QShortcut(Qt::Key_Escape, this);
  connect(escape, &QShortcut::activated, find, &FindBar::close_bar);
  resize_within_screen(*this, {820, 560});
}

void FileEditorView::add_menus() {
  QAction* const save_action = menuBar()->addAction("[ 上書き保存 ]", this, [this] { save(); });
  save_action->setObjectName("mnuSave");
  save_action->setShortcut(QKeySequence::Save);
  QAction* const back = menuBar()->addAction("[ 戻る ]", this, &QWidget::close);
  back->setObjectName("mnuBack");
  QAction* const undo = menuBar()->addAction("[ 元に戻す ]", edit_, &QPlainTextEdit::undo);
  undo->setObjectName("mnuUndo");
  undo->setEnabled(false);
  connect(edit_, &QPlainTextEdit::undoAvailable, undo, &QAction::setEnabled);
}

// As it stands in the document: toPlainText() would turn some characters into others.
QString FileEditorView::text() const {
  QString result = edit_->document()->toRawText();
  return result.replace(QChar::ParagraphSeparator, '\n');
}

bool FileEditorView::save() {
  try {
    const std::size_t lacking = editor_.save(text().toStdString());
    edit_->document()->setModified(false);
    const QString note =
        lacking == 0
            ? QString()
            : QString("\nShift-JIS で書けない文字が %1 文字あり、\"?\" にしました。").arg(lacking);
    QMessageBox::information(this, "Tobarine", "上書き保存完了！" + note);
    return true;
  } catch (const Error& error) {
    QMessageBox::critical(this, "Tobarine", QString::fromUtf8(error.what()));
    return false;
  }
}

bool FileEditorView::may_close() {
  if (!edit_->document()->isModified()) return true;
  const auto answer = QMessageBox::question(
      this, "Tobarine", "変更が保存されていません。上書き保存しますか？",
      QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, QMessageBox::Save);
  if (answer == QMessageBox::Save) return save();
  if (answer == QMessageBox::Cancel) return false;
  edit_->document()->setModified(false);
  return true;
}

void FileEditorView::closeEvent(QCloseEvent* event) {
  event->setAccepted(may_close());
}

}  // namespace tobarine
