// Finds the contacts that a log holds twice: the same call, band and mode in the same minute.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string_view>

namespace tobarine {

// Holds one short mark a contact in a table of fixed size (8 MB): every contact is compared with
// the last million or so before it.
class Duplicates {
 public:
  // The line of an earlier contact like this one; 0 when there is none. The forms of date
  // ("yyyymmdd") and time ("hhmm...", of which four characters count) are the caller's: they must
  // only be the same for all contacts. `line` counts from 1.
  std::size_t find_or_add(std::string_view call, std::string_view band, std::string_view mode,
                          std::string_view date, std::string_view time, std::size_t line);

 private:
  struct Mark {
    std::uint32_t hash = 0;
    std::uint32_t line = 0;  // 0: free
  };
  static constexpr std::size_t kBuckets = std::size_t{1} << 17;
  using Bucket = std::array<Mark, 8>;  // a cache line; the oldest mark gives way

  struct Free {
    void operator()(Bucket* buckets) const { std::free(buckets); }
  };
  std::unique_ptr<Bucket, Free> buckets_;  // made at the first contact
};

}  // namespace tobarine
