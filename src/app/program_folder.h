// The program folder: where the settings and all reference files stand.
#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace tobarine {

// Its path as text always ends with the platform's separator, as the messages and the trace show
// it.
std::string folder_text(const std::filesystem::path& folder);

struct ProgramFolder {
  std::filesystem::path path;  // what is read

  // The files as delivered, when `path` is that folder, which is only read, or the user's own copy
  // of it.
  std::filesystem::path delivered;

  // Where the user's own copy stands or belongs; empty: nowhere.
  std::filesystem::path user_copy;
};

// What decides, besides the files that exist.
struct FolderHints {
  std::filesystem::path home;        // --home or TOBARINE_HOME; empty: none given
  std::filesystem::path executable;  // the running program's file
  std::filesystem::path user_data;   // where programs keep a user's data; empty: not known
};

// The hints that the environment gives: TOBARINE_HOME when `home` is empty, and XDG_DATA_HOME,
// ~/.local/share or (Windows) LOCALAPPDATA.
FolderHints folder_hints(const std::filesystem::path& home,
                         const std::filesystem::path& executable);

// `home` when given; else the executable's folder when the reference files stand there (or the
// user's copy of it, when it cannot be written); else the user's copy of the installed data folder;
// else that folder (share/tobarine beside the executable's folder). Throws FileError when `home` is
// no folder, and when nothing is found.
ProgramFolder locate_program_folder(const FolderHints& hints);

// False also when the disk is full.
bool can_write_into(const std::filesystem::path& folder);

// Is `path` the delivered files themselves, so that writing needs a copy?
bool is_only_read(const ProgramFolder& folder);

// The folder to write into: the user's copy where `path` is only read or cannot be written, made
// now if it is not there. It is complete or not there, whatever happens. Throws FileError.
std::filesystem::path writable_folder(const ProgramFolder& folder);
std::filesystem::path make_user_copy(const ProgramFolder& folder);

// The same for the window, which writes settings and tables in any case: a copy of a folder that
// cannot be written is made only when the answer to the question is yes; nothing: it is no.
std::optional<std::filesystem::path> usable_folder(
    const ProgramFolder& folder, const std::function<bool(const std::string& question)>& ask);

// Brings what was delivered since into the user's copy, when that is what is read, and removes what
// runs that were killed left beside it. See delivered_files.h for `told`. Returns what the user
// should know, lines ended by LF.
std::string refresh_user_copy(const ProgramFolder& folder, bool told);

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
