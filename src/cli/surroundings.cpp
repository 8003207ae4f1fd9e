#include "cli/surroundings.h"

#include <cstdlib>
#include <system_error>

#ifdef _WIN32
#include <io.h>
#include <windows.h>
#else
#include <unistd.h>
#endif

namespace tobarine {
namespace {

std::string environment(const char* name) {
  const char* value = std::getenv(name);
  return value == nullptr ? "" : value;
}

std::filesystem::path executable_file() {
#ifdef _WIN32
  std::wstring buffer(32768, L'\0');
  buffer.resize(GetModuleFileNameW(nullptr, buffer.data(), static_cast<DWORD>(buffer.size())));
  return buffer;
#else
  std::error_code error;
  return std::filesystem::read_symlink("/proc/self/exe", error);
#endif
}

}  // namespace

FolderHints folder_hints(const std::string& home) {
  FolderHints hints;
  hints.home = home.empty() ? environment("TOBARINE_HOME") : home;
  hints.executable = executable_file();
  hints.user_data = environment("XDG_DATA_HOME");
  if (hints.user_data.empty() && !environment("HOME").empty()) {
    hints.user_data = std::filesystem::path(environment("HOME")) / ".local" / "share";
  }
  return hints;
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
