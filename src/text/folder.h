// Files of a folder whose names match without regard to case.
#pragma once

#include <filesystem>
#include <string_view>

namespace tobarine {

// The path of the file with this name (UTF-8), in whatever case the folder has it; folder / name
// when there is none. Only ASCII letters match in either case.
std::filesystem::path file_in(const std::filesystem::path& folder, std::string_view name);

}  // namespace tobarine
