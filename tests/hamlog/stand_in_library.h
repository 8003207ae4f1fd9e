// Hamlog's libraries as a test lays them down.
#pragma once

#include <algorithm>
#include <cstring>
#include <set>
#include <string>
#include <vector>

#include "hamlog/hamlog_library.h"
#include "text/cp932.h"

namespace tobarine {

class StandInLibrary : public HamlogLibrary {
 public:
  std::vector<std::vector<std::string>> records;  // fourteen fields each, UTF-8
  std::set<int> unreadable;                       // records, from 1
  int open_status = 0;
  int open_handles = 0;
  std::string path;

  int dbf_open(const char* database, void* /*handle*/) override {
    path = database;
    return opened();
  }
  int dbf_rcount(void* /*handle*/) override { return static_cast<int>(records.size()); }
  int dbf_close(void* /*handle*/) override { return closed(); }
  int HamlogOpen(int /*zero*/, void* /*handle*/, const char* /*path*/, int /*last*/) override {
    return opened();
  }
  int THW_read(void* handle, int record, int mode) override {
    std::memcpy(handle, &record, sizeof record);
    return mode != 2 || unreadable.contains(record) ? 7 : 0;
  }
  void ThwString(char* text, void* handle, int field) override {
    int record = 0;
    std::memcpy(&record, handle, sizeof record);
    const std::string value = to_cp932(
        records.at(static_cast<std::size_t>(record) - 1).at(static_cast<std::size_t>(field) - 1));
    std::memcpy(text, value.data(), std::min(value.size(), kHamlogTextSize));
  }
  int HamlogClose(void* /*handle*/) override { return closed(); }

 private:
  int opened() {
    if (open_status <= 1) ++open_handles;
    return open_status;
  }
  int closed() {
    --open_handles;
    return 0;
  }
};

}  // namespace tobarine
