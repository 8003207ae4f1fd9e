// What the command line takes from the system around it.
#pragma once

#include <ctime>
#include <filesystem>
#include <string>
#include <vector>

namespace tobarine {

// The running program's file; `called_as` is the program's name as it was called.
std::filesystem::path executable_file(const std::filesystem::path& called_as);

// The program's arguments in UTF-8, whatever the system's code page.
std::vector<std::string> utf8_arguments(int argc, char** argv);

bool stderr_is_terminal();

// Prepares the console for UTF-8 where that is not the rule.
void prepare_console();

}  // namespace tobarine
