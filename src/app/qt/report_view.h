// The window that tells what a run left out or found doubtful.
#pragma once

#include <QMainWindow>
#include <cstddef>
#include <functional>

#include "convert/report.h"

namespace tobarine {

class ReportView : public QMainWindow {
 public:
  // `show_line` is called with a line of the input when the user chooses one of its findings.
  ReportView(const ConversionReport& report, std::function<void(std::size_t)> show_line);
};

}  // namespace tobarine
