// What both windows ask when an ADIF is opened that the classic way would hurt.
#pragma once

#include <filesystem>
#include <optional>

#include "app/shell.h"
#include "convert/adif_reading.h"

namespace tobarine {

// How the file is to be read; asked only where it matters. Nothing: the user wants none of it.
std::optional<AdifReading> ask_how_to_read(Shell& shell, const std::filesystem::path& file,
                                           const AdifLayout& layout);

}  // namespace tobarine
