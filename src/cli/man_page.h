// The manual page of the command line, made from what --help tells.
#pragma once

#include <CLI/CLI.hpp>
#include <string>

namespace tobarine {

// In roff, Japanese, UTF-8.
std::string man_page(const CLI::App& app);

}  // namespace tobarine
