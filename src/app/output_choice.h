// What a window asks before a run writes over a file that the user may still need.
#pragma once

#include <filesystem>
#include <functional>
#include <vector>

#include "app/shell.h"

namespace tobarine {

// Asks as long as one of the outputs would put another file aside: write all the same, choose
// another name, or leave it. `choose_other` lets the user choose; false: he does not. Returns
// whether the run is to write.
bool settle_outputs(Shell& shell,
                    const std::function<std::vector<std::filesystem::path>()>& outputs,
                    const std::function<bool()>& choose_other);

}  // namespace tobarine
