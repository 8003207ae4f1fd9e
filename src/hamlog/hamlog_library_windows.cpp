// Turbo HAMLOG's libraries, bound at run time (32-bit Windows).
#include <array>
#include <cstdint>
#include <string_view>
#include <type_traits>
#include <vector>
#include <windows.h>

#include "hamlog/hamlog_library.h"

namespace tobarine {
namespace {

namespace fs = std::filesystem;

constexpr const char* kHamlog = kHamlogLibrary.data();
constexpr const char* kTexts = "Thdll2Vb.dll";

using Word = std::uint32_t;
static_assert(sizeof(void*) == sizeof(Word), "the libraries are 32-bit");

// Calls an entry and puts the stack pointer back itself. The entries take their arguments off the
// stack, but versions of the libraries differ in how many one of them takes.
__attribute__((noinline)) int call_entry(FARPROC entry, const Word* arguments, Word count) {
  int result;
  asm volatile(
      "movl %%esp, %%esi\n\t"
      "leal (%%edi,%%ecx,4), %%edx\n"
      "1:\n\t"
      "cmpl %%edi, %%edx\n\t"
      "je 2f\n\t"
      "subl $4, %%edx\n\t"
      "pushl (%%edx)\n\t"
      "jmp 1b\n"
      "2:\n\t"
      "call *%%eax\n\t"
      "movl %%esi, %%esp"
      : "=a"(result), "+D"(arguments), "+c"(count)
      : "a"(entry)
      : "edx", "esi", "memory", "cc");
  return result;
}

template <typename Argument>
Word word(Argument argument) {
  if constexpr (std::is_pointer_v<Argument>) {
    return reinterpret_cast<Word>(argument);
  } else {
    return static_cast<Word>(argument);
  }
}

template <typename... Arguments>
int call(FARPROC entry, Arguments... arguments) {
  const std::array<Word, sizeof...(arguments)> words = {word(arguments)...};
  return call_entry(entry, words.data(), words.size());
}

// The folder of the database is the current one while this lives: the libraries look there.
class InFolder {
 public:
  explicit InFolder(const fs::path& folder) : before_(fs::current_path()) {
    std::error_code error;
    fs::current_path(folder, error);
  }
  ~InFolder() {
    std::error_code error;
    fs::current_path(before_, error);
  }
  InFolder(const InFolder&) = delete;
  InFolder& operator=(const InFolder&) = delete;

 private:
  fs::path before_;
};

class WindowsLibrary : public HamlogLibrary {
 public:
  WindowsLibrary(const fs::path& program_folder, const fs::path& named_folder,
                 const fs::path& database)
      : database_(fs::absolute(database)), folders_{fs::absolute(program_folder)} {
    if (!named_folder.empty()) folders_.push_back(fs::absolute(named_folder));
    SetDllDirectoryW(L"");  // what the libraries load themselves is not taken from where they work
    const HMODULE hamlog = load(kHamlog);
    const HMODULE texts = load(kTexts);
    open_ = entry(hamlog, kHamlog, "dbf_open");
    count_ = entry(hamlog, kHamlog, "dbf_rcount");
    close_ = entry(hamlog, kHamlog, "dbf_close");
    hamlog_open_ = entry(hamlog, kHamlog, "HamlogOpen");
    read_ = entry(hamlog, kHamlog, "THW_read");
    hamlog_close_ = entry(hamlog, kHamlog, "HamlogClose");
    string_ = entry(texts, kTexts, "ThwString");
  }

  int dbf_open(const char* path, void* handle) override {
    const InFolder there(database_.parent_path());
    return call(open_, path, handle);
  }
  int dbf_rcount(void* handle) override { return call(count_, handle); }
  int dbf_close(void* handle) override { return call(close_, handle); }
  int HamlogOpen(int zero, void* handle, const char* path, int last) override {
    const InFolder there(database_.parent_path());
    return call(hamlog_open_, zero, handle, path, last);
  }
  int THW_read(void* handle, int record, int mode) override {
    return call(read_, handle, record, mode);
  }
  void ThwString(char* text, void* handle, int field) override {
    call(string_, text, handle, field);
  }
  int HamlogClose(void* handle) override { return call(hamlog_close_, handle, 0); }

 private:
  template <typename Failure = FileError>
  [[noreturn]] void refuse(std::string_view what) const {
    std::string places;
    for (const fs::path& folder : folders_) {
      places += (places.empty() ? "" : "、") + path_text(folder);
    }
    throw Failure(database_, std::string(what) + "。探した所: " + places +
                                 "。Hamlog50.dll を Tobarine.exe と同じフォルダにコピーしてください"
                                 " (Thdll2Vb.dll も)。または、Turbo HAMLOG のフォルダーを設定"
                                 " hamlog_folder で指定するか、Turbo HAMLOG で CSV に出力し、"
                                 "それを変換して下さい");
  }

  // The libraries stay loaded: they keep what they need as long as the program runs.
  HMODULE load(const char* name) const {
    bool wrong = false;
    for (const fs::path& folder : folders_) {
      constexpr DWORD kOnlyThere = LOAD_LIBRARY_SEARCH_DLL_LOAD_DIR | LOAD_LIBRARY_SEARCH_SYSTEM32;
      const fs::path file = folder / name;
      if (const HMODULE module = LoadLibraryExW(file.c_str(), nullptr, kOnlyThere)) return module;
      wrong = wrong || GetLastError() == ERROR_BAD_EXE_FORMAT;
    }
    refuse<HamlogLibraryMissing>(std::string(name) +
                                 (wrong ? " は 32 ビットの DLL ではありません" : " がありません"));
  }

  FARPROC entry(HMODULE module, const char* library, const char* name) const {
    const FARPROC found = GetProcAddress(module, name);
    if (found == nullptr) {
      refuse(std::string(library) + " が古すぎます (" + name + " が無い)");
    }
    return found;
  }

  fs::path database_;
  std::vector<fs::path> folders_;
  FARPROC open_, count_, close_, hamlog_open_, read_, string_, hamlog_close_;
};

}  // namespace

std::unique_ptr<HamlogLibrary> bind_hamlog_library(const fs::path& program_folder,
                                                   const fs::path& named_folder,
                                                   const fs::path& database) {
  return std::make_unique<WindowsLibrary>(program_folder, named_folder, database);
}

}  // namespace tobarine
