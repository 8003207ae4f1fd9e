// tobarine: the window program.
#include <QApplication>
#include <QFont>
#include <QIcon>
#include <QLibraryInfo>
#include <QTranslator>
#include <cstdio>
#include <ctime>
#include <string>
#include <vector>

#include "app/main_window.h"
#include "app/program_folder.h"
#include "app/qt/qt_shell.h"
#include "app/window_arguments.h"
#include "editors/qt/plain_text.h"
#include "text/error.h"
#include "text/open_file.h"

namespace {

using namespace tobarine;

constexpr int kWrongUse = 2;

// The system's font, and behind it those that have Japanese where it has not.
QFont readable_font() {
  QFont font = QApplication::font();
  font.setFamilies({font.family(), "Noto Sans CJK JP", "Yu Gothic UI", "IPAPGothic", "IPAGothic"});
  return font;
}

// Where no reference file is found at all, the program's own folder is the one that lacks them.
ProgramFolder program_folder(const std::filesystem::path& home) {
  const FolderHints hints =
      folder_hints(home, QCoreApplication::applicationFilePath().toStdU16String());
  try {
    return locate_program_folder(hints);
  } catch (const FileError&) {
    if (!hints.home.empty()) throw;
    return {hints.executable.parent_path(), {}, {}};
  }
}

int run(const WindowArguments& arguments) {
  const ProgramFolder found = program_folder(arguments.home);
  const std::string news = refresh_user_copy(found, true);
  QtShell shell;
  const auto usable = usable_folder(found, [&shell](const std::string& question) {
    return shell.ask({"Tobarine", question, {"続ける"}}).has_value();
  });
  if (!usable) return 1;
  const std::filesystem::path& folder = *usable;
  StartUp start = start_up({folder, qEnvironmentVariable("WINDIR").toStdString(), shell.now()});
  if (start.stop) {
    message_box(nullptr, QMessageBox::Critical, start.stop->title, start.stop->text)->exec();
    return 1;
  }
  MainWindow commands(std::move(start), folder, shell);
  shell.show(commands);
  if (!news.empty()) shell.show_message(Shell::Icon::kInformation, {"Tobarine", news});
  if (!arguments.log.empty()) commands.open_file(arguments.log);
  return QApplication::exec();
}

// In the terminal that the program was started from; on Windows it has none.
void say(std::FILE* stream, const std::string& text) {
#ifdef _WIN32
  static_cast<void>(stream);
  QMessageBox box(QMessageBox::NoIcon, "Tobarine", QString::fromStdString(text));
  box.setTextFormat(Qt::PlainText);
  box.exec();
#else
  static_cast<void>(std::fputs(text.c_str(), stream));
#endif
}

std::vector<std::string> utf8(const QStringList& words) {
  std::vector<std::string> texts;
  for (const QString& word : words) texts.push_back(word.toStdString());
  return texts;
}

// --help and --version, which need no display. Qt's own words are not known yet.
std::optional<int> answer(int argc, char** argv) {
#ifdef _WIN32
  static_cast<void>(argc);
  static_cast<void>(argv);
#else
  const std::string answer = parse_window_arguments({argv, argv + argc}).answer;
  if (!answer.empty()) {
    say(stdout, answer);
    if (std::fflush(stdout) == 0) return 0;
    say(stderr, "tobarine: 標準出力に書けません\n");
    return 1;
  }
#endif
  return std::nullopt;
}

}  // namespace

int main(int argc, char** argv) {
  survive_size_limit();
  if (const auto status = answer(argc, argv)) return *status;
  const QApplication application(argc, argv);
  QApplication::setApplicationName("Tobarine");
  QApplication::setDesktopFileName("tobarine");
  QApplication::setWindowIcon(QIcon(":/tobarine.png"));
  QApplication::setQuitOnLastWindowClosed(false);
  QApplication::setFont(readable_font());
  QTranslator qt_texts;  // the buttons of Qt's own dialogs
  if (qt_texts.load("qtbase_ja", QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
    QApplication::installTranslator(&qt_texts);
  }
  const WindowArguments arguments = parse_window_arguments(utf8(QCoreApplication::arguments()));
  if (!arguments.answer.empty()) {
    say(stdout, arguments.answer);
    return 0;
  }
  if (!arguments.problem.empty()) {
    say(stderr, arguments.problem + "\n");
    return kWrongUse;
  }
  try {
    return run(arguments);
  } catch (const Error& error) {
    message_box(nullptr, QMessageBox::Critical, "Tobarine", error.what())->exec();
    return 1;
  }
}
