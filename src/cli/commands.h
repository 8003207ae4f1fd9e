// The commands of tobarine-cli. Each writes its result to standard output and throws the failures
// of text/error.h.
#pragma once

#include "cli/options.h"

namespace tobarine {

// Runs the command; returns the exit status (0 done, 1 the run failed after a part was done).
int run_command(const CliOptions& options);

}  // namespace tobarine
