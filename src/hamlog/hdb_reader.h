// Turbo HAMLOG's database (Hamlog.hdb, version 5), read through Hamlog's own libraries.
#pragma once

#include <array>
#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

#include "hamlog/contact_reader.h"
#include "hamlog/hamlog_library.h"

namespace tobarine {

// The number of records. Throws FileError.
std::size_t count_hamlog_hdb(const std::filesystem::path& database, HamlogLibrary& library);

class HdbReader : public ContactReader {
 public:
  // The library must live as long. Throws FileError.
  HdbReader(std::filesystem::path database, HamlogLibrary& library);
  ~HdbReader() override;
  HdbReader(const HdbReader&) = delete;
  HdbReader& operator=(const HdbReader&) = delete;

  // Records in stored order. One that cannot be read is reported and passed over; the third in a
  // row is a RecordError.
  bool next(QsoRecord& record, FindingLog& findings) override;
  std::size_t line() const override { return number_; }  // the record's number
  Done done() const override { return {number_, count_}; }

  std::size_t count() const { return count_; }

 private:
  static constexpr std::size_t kFields = 14;

  std::filesystem::path database_;
  HamlogLibrary& library_;
  std::vector<char> handle_;
  std::size_t count_;
  std::size_t number_ = 0;
  std::array<std::string, kFields> fields_;
};

}  // namespace tobarine
