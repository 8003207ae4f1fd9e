// tobarine: the window program.
#include <QApplication>
#include <QFont>
#include <QIcon>
#include <QLibraryInfo>
#include <QTranslator>
#include <ctime>

#include "app/main_window.h"
#include "app/program_folder.h"
#include "app/qt/qt_shell.h"
#include "editors/qt/plain_text.h"
#include "text/error.h"
#include "text/open_file.h"

namespace {

using namespace tobarine;

// The system's font, and behind it those that have Japanese where it has not.
QFont readable_font() {
  QFont font = QApplication::font();
  font.setFamilies({font.family(), "Noto Sans CJK JP", "Yu Gothic UI", "IPAPGothic", "IPAGothic"});
  return font;
}

// Where no reference file is found at all, the program's own folder is the one that lacks them.
ProgramFolder program_folder() {
  const FolderHints hints =
      folder_hints({}, QCoreApplication::applicationFilePath().toStdU16String());
  try {
    return locate_program_folder(hints);
  } catch (const FileError&) {
    if (!hints.home.empty()) throw;
    return {hints.executable.parent_path(), {}, {}};
  }
}

int run() {
  const ProgramFolder found = program_folder();
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
  // A log given on the command line, as file managers do.
  const QStringList arguments = QCoreApplication::arguments();
  if (arguments.size() > 1) commands.open_file(arguments[1].toStdU16String());
  return QApplication::exec();
}

}  // namespace

int main(int argc, char** argv) {
  survive_size_limit();
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
  try {
    return run();
  } catch (const Error& error) {
    message_box(nullptr, QMessageBox::Critical, "Tobarine", error.what())->exec();
    return 1;
  }
}
