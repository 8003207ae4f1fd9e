// The leak check of the address sanitizer reads /proc; where there is none (a bare chroot), it is
// switched off instead of ending every program. The environment cannot say so: the sanitizer reads
// that from /proc as well.
#include <unistd.h>

extern "C" const char* __asan_default_options();  // NOLINT(bugprone-reserved-identifier)

extern "C" const char* __asan_default_options() {  // NOLINT(bugprone-reserved-identifier)
  return access("/proc/self/maps", R_OK) == 0 ? "" : "detect_leaks=0";
}
