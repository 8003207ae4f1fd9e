// Completion of the command line for bash, made from what --help tells and the table of options.
#pragma once

#include <CLI/CLI.hpp>
#include <string>

namespace tobarine {

// A script for bash: commands, their options, files, the names of --set and their values.
std::string bash_completion(const CLI::App& app);

}  // namespace tobarine
