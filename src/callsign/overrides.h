// Hand-kept corrections that win over `dxcc_hl.dat`: `dx_mastL.txt` (full calls) and `dx_mastS.txt`
// (prefixes). Both files are optional.
//
// File form: CP932 text; lines that begin with "#" are comments. Fields separated by blanks or
// tabs:
//   call or prefix   DXCC number   [from yyyymmdd   [to yyyymmdd]]   [# remark]
// An entry with dates counts only for contacts from the first to the last day, both included; "-"
// leaves an end open. Of several entries for one call the first that fits counts.
#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "callsign/entities.h"

namespace tobarine {

class Overrides {
 public:
  // A file that does not exist leaves the table empty. Throws FileError, RecordError.
  void load(const std::filesystem::path& path, const EntityList& entities);

  // `date` is yyyymmdd; an empty or malformed one fits entries without dates only. 0: no entry.
  unsigned find(std::string_view key, std::string_view date) const;

  // The longest prefix of the call with an entry that fits; 0: none.
  unsigned find_prefix(std::string_view call, std::string_view date) const;

 private:
  struct Entry {
    unsigned dxcc;
    std::string from;  // empty: open
    std::string to;
  };
  std::map<std::string, std::vector<Entry>, std::less<>> entries_;
};

}  // namespace tobarine
