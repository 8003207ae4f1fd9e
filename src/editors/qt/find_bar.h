// A line at the foot of a window in which the user says what to look for.
#pragma once

#include <QLabel>
#include <QLineEdit>
#include <QWidget>
#include <functional>

namespace tobarine {

enum class Found {
  kAhead,      // on the way that was asked for
  kAfterWrap,  // only beyond the end, from the other end on
  kNowhere
};

class FindBar : public QWidget {
 public:
  // `find(text, backwards)` looks for the text from where the user is, on beyond the end.
  FindBar(std::function<Found(const QString&, bool)> find, QWidget* parent);

  void open();       // shows the bar and takes the focus
  bool close_bar();  // for the window's Escape key; false: it was not open

 private:
  void look(bool backwards);

  std::function<Found(const QString&, bool)> find_;
  QLineEdit* text_;
  QLabel* note_;
};

}  // namespace tobarine
