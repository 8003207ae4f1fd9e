// What the user can do about a finding, in the words of what shows it.
#pragma once

#include <string_view>

#include "rules/findings.h"

namespace tobarine {

enum class Front { kWindow, kCommandLine };

// One sentence; empty where the finding says it all.
std::string_view finding_advice(FindingKind kind, Front front);

}  // namespace tobarine
