// Which paths lead to one file on the disk.
#pragma once

#include <filesystem>
#include <vector>

namespace tobarine {

// Whether both paths lead to one file, by whatever names, symbolic and hard links; also when it is
// not there yet. A device is nobody's file.
bool same_file(const std::filesystem::path& a, const std::filesystem::path& b);

// The file that the path leads to through symbolic links, also when it is not there yet.
std::filesystem::path real_file(const std::filesystem::path& path);

// Every output of a command is held against all that it reads. Throws UsageError when an output is
// one of the inputs, or when two outputs are one file. Empty paths stand for none.
void refuse_shared_files(const std::vector<std::filesystem::path>& inputs,
                         const std::vector<std::filesystem::path>& outputs);

}  // namespace tobarine
