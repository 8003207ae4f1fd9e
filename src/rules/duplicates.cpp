#include "rules/duplicates.h"

#include <algorithm>

namespace tobarine {
namespace {

// FNV-1a over all texts, each closed by a byte that none of them holds, then mixed.
std::uint64_t hash_of(std::initializer_list<std::string_view> texts) {
  constexpr std::uint64_t kPrime = 0x100000001B3;
  std::uint64_t hash = 0xCBF29CE484222325;
  for (const std::string_view text : texts) {
    for (const char c : text) hash = (hash ^ static_cast<unsigned char>(c)) * kPrime;
    hash = (hash ^ 0xFF) * kPrime;
  }
  hash = (hash ^ (hash >> 33)) * 0xFF51AFD7ED558CCD;
  return hash ^ (hash >> 33);
}

}  // namespace

std::size_t Duplicates::find_or_add(std::string_view call, std::string_view band,
                                    std::string_view mode, std::string_view date,
                                    std::string_view time, std::size_t line) {
  if (buckets_.empty()) buckets_.resize(kBuckets);
  const std::uint64_t hash = hash_of({call, band, mode, date, time.substr(0, 4)});
  Bucket& bucket = buckets_[hash % kBuckets];
  const auto mark = static_cast<std::uint32_t>(hash >> 32);
  for (const Mark& seen : bucket) {
    if (seen.hash == mark && seen.line != 0) return seen.line;
  }
  *std::ranges::min_element(bucket, {}, &Mark::line) = {mark, static_cast<std::uint32_t>(line)};
  return 0;
}

}  // namespace tobarine
