// Turbo HAMLOG's own libraries for its database, Hamlog50.dll and Thdll2Vb.dll: the seven entries
// that are used. Texts are CP932, handles opaque memory of the caller's.
#pragma once

#include <cstddef>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

#include "text/error.h"

namespace tobarine {

// Memory for one handle: more than any version of the libraries asks for.
inline constexpr std::size_t kHamlogHandleSize = std::size_t{64} * 1024;
// For one field: no field is longer than 255 bytes.
inline constexpr std::size_t kHamlogTextSize = 512;

class HamlogLibrary {
 public:
  virtual ~HamlogLibrary() = default;

  // Named as the libraries name them. Statuses: 0 and 1 are success.
  virtual int dbf_open(const char* path, void* handle) = 0;
  virtual int dbf_rcount(void* handle) = 0;  // the number of records
  virtual int dbf_close(void* handle) = 0;
  virtual int HamlogOpen(int zero, void* handle, const char* path, int last) = 0;
  virtual int THW_read(void* handle, int record, int mode) = 0;     // records count from 1
  virtual void ThwString(char* text, void* handle, int field) = 0;  // fields count from 1
  virtual int HamlogClose(void* handle) = 0;
};

inline constexpr std::string_view kHamlogLibrary = "Hamlog50.dll";

// There are none that can be loaded in the folders that are looked into.
class HamlogLibraryMissing : public FileError {
 public:
  using FileError::FileError;
};

// Binds the libraries. A library is a program, so it is loaded from the program's folder and the
// one that the user has named (empty: none) only, never from where a database happens to stand.
// Throws FileError, which says what is missing and what to do.
std::unique_ptr<HamlogLibrary> bind_hamlog_library(const std::filesystem::path& program_folder,
                                                   const std::filesystem::path& named_folder,
                                                   const std::filesystem::path& database);

// A status with its meaning, for people.
std::string hamlog_status_text(int status);

}  // namespace tobarine
