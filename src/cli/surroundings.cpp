#include "cli/surroundings.h"

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
