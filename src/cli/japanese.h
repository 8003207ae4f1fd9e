// CLI11 speaks English; here it learns Japanese.
#pragma once

#include <CLI/CLI.hpp>
#include <string>

namespace tobarine {

// Headings and layout of --help. Before any option or command is added.
void speak_japanese(CLI::App& app);

// What is wrong with the words given and what to do next, in one line.
std::string usage_message(const CLI::App& app, const CLI::ParseError& error);

}  // namespace tobarine
