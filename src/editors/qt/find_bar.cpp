#include "editors/qt/find_bar.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <utility>

namespace tobarine {

FindBar::FindBar(std::function<Found(const QString&, bool)> find, QWidget* parent)
    : QWidget(parent), find_(std::move(find)), text_(new QLineEdit(this)), note_(new QLabel(this)) {
  setObjectName("FindBar");
  text_->setObjectName("txtFind");
  text_->setAccessibleName("探す文字");
  text_->setAcceptDrops(false);  // a file that is dropped is the window's business
  note_->setObjectName("lblFind");
  auto* const layout = new QHBoxLayout(this);
  layout->setContentsMargins(6, 3, 6, 3);
  layout->addWidget(new QLabel("検索:", this));
  layout->addWidget(text_, 1);
  const auto add_button = [&](const char* name, const QString& caption, bool backwards) {
    auto* const button = new QPushButton(caption, this);
    button->setObjectName(name);
    button->setAutoDefault(true);  // Enter presses it
    connect(button, &QPushButton::clicked, this, [this, backwards] { look(backwards); });
    layout->addWidget(button);
  };
  add_button("cmdFindNext", "次を検索", false);
  add_button("cmdFindPrevious", "前を検索", true);
  layout->addWidget(note_);
  connect(text_, &QLineEdit::returnPressed, this, [this] { look(false); });
  connect(text_, &QLineEdit::textChanged, note_, &QLabel::clear);
  hide();
}

void FindBar::open() {
  show();
  text_->setFocus();
  text_->selectAll();
}

void FindBar::look(bool backwards) {
  if (text_->text().isEmpty()) return;
  switch (find_(text_->text(), backwards)) {
    case Found::kAhead:
      note_->clear();
      break;
    case Found::kAfterWrap:
      note_->setText(backwards ? "末尾に戻りました" : "先頭に戻りました");
      break;
    case Found::kNowhere:
      note_->setText("見つかりません");
  }
}

bool FindBar::close_bar() {
  if (!isVisible()) return false;
  hide();
  return true;
}

}  // namespace tobarine
