// tobarine: the window program.
#include <QApplication>
#include <QFont>
#include <QIcon>
#include <QLibraryInfo>
#include <QMessageBox>
#include <QTranslator>
#include <cstdlib>
#include <ctime>

#include "app/main_window.h"
#include "app/program_folder.h"
#include "app/qt/qt_shell.h"
#include "text/error.h"
#include "text/open_file.h"
#include "text/temporary_file.h"

namespace {

using namespace tobarine;

FolderHints folder_hints() {
  FolderHints hints;
  hints.home = qEnvironmentVariable("TOBARINE_HOME").toStdU16String();
  hints.executable = QCoreApplication::applicationFilePath().toStdU16String();
  QString data = qEnvironmentVariable("XDG_DATA_HOME");
  if (data.isEmpty()) data = qEnvironmentVariable("HOME") + "/.local/share";
  hints.user_data = data.toStdU16String();
  return hints;
}

// The system's font, and behind it those that have Japanese where it has not.
QFont readable_font() {
  QFont font = QApplication::font();
  font.setFamilies({font.family(), "Noto Sans CJK JP", "Yu Gothic UI", "IPAPGothic", "IPAGothic"});
  return font;
}

// Where no reference file is found at all, the program's own folder is the one that lacks them.
std::filesystem::path program_folder() {
  const FolderHints hints = folder_hints();
  try {
    return make_user_copy(locate_program_folder(hints));
  } catch (const FileError&) {
    if (!hints.home.empty()) throw;
    return hints.executable.parent_path();
  }
}

// Settings, tables and the intermediate file go into the program folder.
void need_writable(const std::filesystem::path& folder) {
  try {
    const TemporaryFile probe({folder}, "tobarine");
  } catch (const FileError&) {
    throw FileError(folder,
                    "プログラムフォルダーに書き込めません。設定や変換テーブルを書くので、"
                    "Tobarine をフォルダーごと、ドキュメントなど書き込める所に移して下さい");
  }
}

int run() {
  const std::filesystem::path folder = program_folder();
  need_writable(folder);
  QtShell shell;
  StartUp start = start_up({folder, qEnvironmentVariable("WINDIR").toStdString(), shell.now()});
  if (start.stop) {
    QMessageBox::critical(nullptr, QString::fromStdString(start.stop->title),
                          QString::fromStdString(start.stop->text).replace("\r\n", "\n"));
    return 1;
  }
  MainWindow commands(std::move(start), folder, shell);
  shell.show(commands);
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
    QMessageBox::critical(nullptr, "Tobarine", QString::fromUtf8(error.what()));
    return 1;
  }
}
