// Runs every target once on each file of its corpus: `tobarine_replay REPOSITORY`. With --list only
// tells which these are, "TARGET FILE" a line.
#include <filesystem>
#include <iostream>
#include <string_view>
#include <vector>

#include "targets.h"
#include "text/error.h"

namespace fs = std::filesystem;
using tobarine::fuzz::Target;

namespace {

std::vector<fs::path> corpus(const fs::path& repository, const Target& target) {
  std::vector<fs::path> files;
  for (const std::string_view seed : target.seeds) {
    if (!seed.empty()) files.push_back(repository / seed);
  }
  const fs::path folder = repository / "fuzz" / "corpus" / target.name;
  if (fs::is_directory(folder)) {
    for (const auto& entry : fs::directory_iterator(folder)) files.push_back(entry.path());
  }
  return files;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2) {
    std::cerr << "usage: tobarine_replay REPOSITORY [--list]\n";
    return 2;
  }
  const bool only_list = argc > 2 && std::string_view(argv[2]) == "--list";
  int without_corpus = 0;
  for (const Target& target : tobarine::fuzz::all_targets()) {
    const auto files = corpus(argv[1], target);
    if (files.empty()) {
      std::cerr << target.name << " has no corpus\n";
      ++without_corpus;
    }
    for (const fs::path& file : files) {
      // At once, for the target may end the process.
      std::cout << target.name << ' ' << tobarine::path_text(file) << std::endl;
      if (!only_list) target.run(tobarine::fuzz::bytes_of(file));
    }
  }
  return without_corpus == 0 ? 0 : 1;
}
