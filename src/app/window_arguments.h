// The words on the window program's command line.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace tobarine {

struct WindowArguments {
  std::filesystem::path home;  // --home; empty: not given
  std::filesystem::path log;   // to open; empty: none
  std::string answer;          // to --help and --version: show this and end
  std::string problem;         // what is wrong: show this and end with status 2
};

// `arguments` in UTF-8, the program's name first. Words of Qt's own (-style, -platform, ...) must
// be gone unless only the answer is asked for.
WindowArguments parse_window_arguments(const std::vector<std::string>& arguments);

}  // namespace tobarine
