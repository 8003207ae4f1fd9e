// libFuzzer's way in: `tobarine_fuzz TARGET [libFuzzer's options and folders]`.
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <string_view>

#include "targets.h"

namespace {
tobarine::fuzz::Target target;
}

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv) {
  const auto targets = tobarine::fuzz::all_targets();
  const std::string_view name = *argc > 1 ? (*argv)[1] : "";
  const auto found = std::ranges::find(targets, name, &tobarine::fuzz::Target::name);
  if (found == targets.end()) {
    std::cerr << "no such target; there are:\n";
    for (const auto& one : targets) std::cerr << "  " << one.name << '\n';
    std::exit(2);
  }
  target = *found;
  for (int i = 1; i + 1 < *argc; ++i) (*argv)[i] = (*argv)[i + 1];
  --*argc;
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  target.run({reinterpret_cast<const char*>(data), size});
  return 0;
}
