// The program folder: where the settings and all reference files stand.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace tobarine {

// Its path as text always ends with the platform's separator, as the messages and the trace show
// it.
std::string folder_text(const std::filesystem::path& folder);

struct ProgramFolder {
  std::filesystem::path path;

  // Set when `path` is the installed data folder, which is only read: the user's own copy, not made
  // yet, belongs here.
  std::optional<std::filesystem::path> user_copy;
};

// What decides, besides the files that exist.
struct FolderHints {
  std::filesystem::path home;        // --home or TOBARINE_HOME; empty: none given
  std::filesystem::path executable;  // the running program's file
  std::filesystem::path user_data;   // $XDG_DATA_HOME, or ~/.local/share
};

// `home` when given; else the executable's folder when the reference files stand there; else the
// user's copy; else the installed data folder (share/tobarine beside the executable's folder).
// Throws FileError when `home` is no folder, and when nothing is found.
ProgramFolder locate_program_folder(const FolderHints& hints);

// Makes the user's copy of an installed data folder and returns its path. Throws FileError.
std::filesystem::path make_user_copy(const ProgramFolder& folder);

// Where temporary files may stand: on Windows the root of the program's drive first, then the
// system's temporary folder.
std::vector<std::filesystem::path> temporary_folders(const std::filesystem::path& program_folder);

// The required reference files, in the order in which they are checked; and those not there.
const std::vector<std::string>& reference_files();
std::vector<std::string> missing_reference_files(const std::filesystem::path& folder);

// The message about missing files (lines end with CR LF) and its title.
std::string missing_files_text(const std::filesystem::path& folder,
                               const std::vector<std::string>& missing);
std::string missing_files_title();

}  // namespace tobarine
