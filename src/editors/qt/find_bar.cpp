#include "editors/qt/find_bar.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <utility>

namespace tobarine {

FindBar::FindBar(std::function<bool(const QString&, bool)> find, QWidget* parent)
    : QWidget(parent), find_(std::move(find)), text_(new QLineEdit(this)) {
  setObjectName("FindBar");
  text_->setObjectName("txtFind");
  text_->setAccessibleName("探す文字");
  auto* const next = new QPushButton("次を検索", this);
  auto* const previous = new QPushButton("前を検索", this);
  auto* const layout = new QHBoxLayout(this);
  layout->setContentsMargins(6, 3, 6, 3);
  layout->addWidget(new QLabel("検索:", this));
  layout->addWidget(text_, 1);
  layout->addWidget(next);
  layout->addWidget(previous);
  connect(text_, &QLineEdit::returnPressed, this, [this] { look(false); });
  connect(text_, &QLineEdit::textChanged, this, [this] { text_->setStyleSheet(""); });
  connect(next, &QPushButton::clicked, this, [this] { look(false); });
  connect(previous, &QPushButton::clicked, this, [this] { look(true); });
  hide();
}

void FindBar::open() {
  show();
  text_->setFocus();
  text_->selectAll();
}

void FindBar::look(bool backwards) {
  if (text_->text().isEmpty()) return;
  const bool found = find_(text_->text(), backwards);
  text_->setStyleSheet(found ? "" : "color: red");
  text_->setToolTip(found ? "" : "見つかりません");
}

bool FindBar::close_bar() {
  if (!isVisible()) return false;
  hide();
  return true;
}

}  // namespace tobarine
