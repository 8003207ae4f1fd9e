// tobarine-cli: everything the window can do, for scripts.
#include <exception>
#include <iostream>

#include "cli/commands.h"
#include "cli/options.h"
#include "cli/surroundings.h"
#include "text/error.h"
#include "text/open_file.h"

int main(int argc, char** argv) {
  constexpr int kFailed = 1;
  constexpr int kWrongUse = 2;
  using namespace tobarine;
  try {
    prepare_console();
    survive_size_limit();
    std::ios::sync_with_stdio(false);
    const ParsedOptions parsed = parse_options(utf8_arguments(argc, argv));
    const int status = parsed.exit_status >= 0 ? parsed.exit_status : run_command(parsed.options);
    std::cout.flush();
    if (!std::cout) throw Error("標準出力に書けません");
    return status;
  } catch (const UsageError& error) {
    std::cerr << "tobarine-cli: " << error.what() << '\n';
    return kWrongUse;
  } catch (const std::exception& error) {
    std::cerr << "tobarine-cli: " << error.what() << '\n';
    return kFailed;
  }
}
