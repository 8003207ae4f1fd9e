#include "cli/surroundings.h"

#include <cstdlib>
#include <system_error>

#ifdef _WIN32
#include <io.h>
#include <windows.h>
// After windows.h:
#include <shellapi.h>

#include "text/error.h"
#else
#include <unistd.h>
#endif

namespace tobarine {
namespace {

std::filesystem::path environment(const std::string& name) {
#ifdef _WIN32
  const wchar_t* const value = _wgetenv(std::wstring(name.begin(), name.end()).c_str());
  return value == nullptr ? std::filesystem::path() : std::filesystem::path(value);
#else
  const char* const value = std::getenv(name.c_str());
  return value == nullptr ? "" : value;
#endif
}

std::filesystem::path executable_file(const std::filesystem::path& called_as) {
#ifdef _WIN32
  static_cast<void>(called_as);
  std::wstring buffer(32768, L'\0');
  buffer.resize(GetModuleFileNameW(nullptr, buffer.data(), static_cast<DWORD>(buffer.size())));
  return buffer;
#else
  std::error_code error;
  const std::filesystem::path self = std::filesystem::read_symlink("/proc/self/exe", error);
  return error ? std::filesystem::absolute(called_as) : self;  // no /proc in a bare chroot
#endif
}

}  // namespace

FolderHints folder_hints(const std::filesystem::path& home,
                         const std::filesystem::path& called_as) {
  FolderHints hints;
  hints.home = home.empty() ? environment("TOBARINE_HOME") : home;
  hints.executable = executable_file(called_as);
  hints.user_data = environment("XDG_DATA_HOME");
  if (hints.user_data.empty() && !environment("HOME").empty()) {
    hints.user_data = environment("HOME") / ".local" / "share";
  }
  return hints;
}

std::vector<std::string> utf8_arguments(int argc, char** argv) {
#ifdef _WIN32
  static_cast<void>(argv);
  std::vector<std::string> arguments;
  LPWSTR* const wide = CommandLineToArgvW(GetCommandLineW(), &argc);
  for (int i = 0; i < argc; ++i) arguments.push_back(path_text(std::filesystem::path(wide[i])));
  LocalFree(wide);
  return arguments;
#else
  return {argv, argv + argc};
#endif
}

bool stderr_is_terminal() {
#ifdef _WIN32
  return _isatty(_fileno(stderr)) != 0;
#else
  return isatty(STDERR_FILENO) != 0;
#endif
}

void prepare_console() {
#ifdef _WIN32
  SetConsoleOutputCP(CP_UTF8);
#endif
}

}  // namespace tobarine
