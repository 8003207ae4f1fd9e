#include "rules/duplicates.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <new>

namespace tobarine {
namespace {

// Eight bytes at a time; the lengths tell one text from the next.
std::uint64_t hash_of(std::initializer_list<std::string_view> texts) {
  constexpr std::uint64_t kFactor = 0x9FB21C651E98DF25;
  std::uint64_t hash = 0;
  const auto mix = [&hash](std::uint64_t word) {
    hash = (hash ^ word) * kFactor;
    hash ^= hash >> 32;
  };
  for (std::string_view text : texts) {
    hash += text.size();
    std::uint64_t word = 0;
    for (; text.size() > sizeof word; text.remove_prefix(sizeof word)) {
      std::memcpy(&word, text.data(), sizeof word);
      mix(word);
    }
    word = 0;
    if (!text.empty()) std::memcpy(&word, text.data(), text.size());
    mix(word);
  }
  return hash;
}

}  // namespace

std::size_t Duplicates::find_or_add(std::string_view call, std::string_view band,
                                    std::string_view mode, std::string_view date,
                                    std::string_view time, std::size_t line) {
  // Only what is used of it takes memory and time: most logs are short.
  if (!buckets_) buckets_.reset(static_cast<Bucket*>(std::calloc(kBuckets, sizeof(Bucket))));
  if (!buckets_) throw std::bad_alloc();
  const std::uint64_t hash = hash_of({call, band, mode, date, time.substr(0, 4)});
  Bucket& bucket = buckets_.get()[hash % kBuckets];
  const auto mark = static_cast<std::uint32_t>(hash >> 32);
  for (const Mark& seen : bucket) {
    if (seen.hash == mark && seen.line != 0) return seen.line;
  }
  *std::ranges::min_element(bucket, {}, &Mark::line) = {mark, static_cast<std::uint32_t>(line)};
  return 0;
}

}  // namespace tobarine
