// Times the window: from nothing to a filled one, a conversion in it beside the same run without a
// window, and the viewer on a long file. Usage: window_runs PROGRAM-FOLDER HAMLOG.csv
#include <QApplication>
#include <QElapsedTimer>
#include <cstdio>

#include "app/qt/qt_shell.h"
#include "app/qt/viewer_view.h"
#include "convert/h2l.h"

int main(int argc, char** argv) {
  using namespace tobarine;
  if (argc < 3) return 2;
  const std::filesystem::path folder = argv[1];
  const std::filesystem::path log = argv[2];
  QElapsedTimer timer;
  timer.start();
  const QApplication application(argc, argv);
  QtShell shell;
  MainWindow commands(start_up({folder, "", shell.now()}), folder, shell);
  shell.show(commands);
  QApplication::processEvents();
  std::printf("window shown          %6lld ms\n", static_cast<long long>(timer.restart()));
  commands.open_file(log);
  std::printf("log opened            %6lld ms\n", static_cast<long long>(timer.restart()));
  commands.call_tables();
  timer.restart();
  commands.command("cmdH2L");
  const auto in_window = static_cast<long long>(timer.restart());
  H2lJob job;
  job.input = log;
  job.output = output_path(log, "adi");
  job.options = h2l_options(commands.settings());
  run_h2l(job, commands.conversion_tables(), commands.call_tables(), {});
  const auto alone = static_cast<long long>(timer.restart());
  std::printf("h2l in the window     %6lld ms, without it %lld ms\n", in_window, alone);
  ViewerView viewer(log);
  viewer.show();
  QApplication::processEvents();
  std::printf("viewer of %4.0f MB     %6lld ms\n",
              static_cast<double>(std::filesystem::file_size(log)) / 1e6,
              static_cast<long long>(timer.restart()));
  return 0;
}
