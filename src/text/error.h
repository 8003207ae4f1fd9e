// The few kinds of failure that end a command. They are thrown where the failure is seen and caught
// once, where the command was given; `what()` is the one line the user reads.
#pragma once

#include <cstddef>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>

namespace tobarine {

// Base of all failures below. `what()` is UTF-8, one line, without a line end: control characters
// that names and values bring along are shown, see text/printable.h.
class Error : public std::runtime_error {
 public:
  explicit Error(std::string_view text);
};

// A file cannot be opened, read, written or replaced, or is not what it should be as a whole.
class FileError : public Error {
 public:
  FileError(const std::filesystem::path& file, std::string_view reason);
};

// One line, row or record of a file is such that reading cannot go on. `line` counts from 1.
class RecordError : public Error {
 public:
  RecordError(const std::filesystem::path& file, std::size_t line, std::string_view reason);
};

// A server cannot be reached, or its answer is not what was asked for.
class NetworkError : public Error {
 public:
  NetworkError(std::string_view url, std::string_view reason);
};

// The command was given wrongly (unknown setting, output equal to input, ...).
class UsageError : public Error {
 public:
  using Error::Error;
};

// The path as UTF-8 text for messages, and back; the system's own narrow texts may be in another
// code page.
std::string path_text(const std::filesystem::path& path);
std::filesystem::path path_from_text(std::string_view utf8);

// The system's reason for a failure (errno), in Japanese; with the file, a folder on its way that
// does not exist is named.
std::string system_reason(int error_number);
std::string system_reason(int error_number, const std::filesystem::path& file);
std::string system_reason(const std::error_code& error, const std::filesystem::path& file);

}  // namespace tobarine
