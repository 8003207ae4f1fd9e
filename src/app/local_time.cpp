#include "app/local_time.h"

namespace tobarine {

std::tm local_time() {
  const std::time_t time = std::time(nullptr);
  std::tm local{};
#ifdef _WIN32
  localtime_s(&local, &time);
#else
  localtime_r(&time, &local);
#endif
  return local;
}

}  // namespace tobarine
