// A line at the foot of a window in which the user says what to look for.
#pragma once

#include <QLineEdit>
#include <QWidget>
#include <functional>

namespace tobarine {

class FindBar : public QWidget {
 public:
  // `find(text, backwards)` looks for the text from where the user is; false: there is none.
  FindBar(std::function<bool(const QString&, bool)> find, QWidget* parent);

  void open();       // shows the bar and takes the focus
  bool close_bar();  // for the window's Escape key; false: it was not open

 private:
  void look(bool backwards);

  std::function<bool(const QString&, bool)> find_;
  QLineEdit* text_;
};

}  // namespace tobarine
