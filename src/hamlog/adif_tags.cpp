#include "hamlog/adif_tags.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <vector>

#include "text/strings.h"

namespace tobarine {
namespace {

// The last eight characters before a colon in one number, letters in upper case, so that most names
// are told apart by one comparison. Other characters may fall together; a match is looked at again.
static_assert(std::endian::native == std::endian::little);
std::uint64_t packed_end(std::string_view text) {
  std::uint64_t packed = 0;
  if (text.size() >= sizeof packed) {
    std::memcpy(&packed, text.data() + text.size() - sizeof packed, sizeof packed);
  } else {
    std::memcpy(reinterpret_cast<char*>(&packed) + sizeof packed - text.size(), text.data(),
                text.size());
  }
  return packed & 0xDFDFDFDFDFDFDFDFU;
}

struct PackedTag {
  std::uint64_t end;
  std::uint64_t mask;  // of the characters that count
  std::size_t tag;
};

// The tags by the last character of their names.
using PackedTags = std::array<std::vector<PackedTag>, 256>;

std::size_t last_of(std::uint64_t packed) {
  return packed >> 56;
}

PackedTags pack_tags() {
  PackedTags result;
  for (std::size_t i = 0; i < std::size(kTags); ++i) {
    const std::size_t used = std::min<std::size_t>(kTags[i].name.size(), 8);
    const std::uint64_t end = packed_end(kTags[i].name);
    result[last_of(end)].push_back({end, packed_end(std::string(used, '\xFF')), i});
  }
  return result;
}

// NOLINTNEXTLINE(cert-err58-cpp): without memory at its start the program cannot do anything
const PackedTags kPackedTags = pack_tags();

bool ends_with_name(std::string_view head, std::string_view name) {
  if (head.size() < name.size()) return false;
  const std::string_view end = head.substr(head.size() - name.size());
  return end == name || equal_ignoring_case(end, name);
}

}  // namespace

TagMatch tags_at(std::string_view head, char behind) {
  TagMatch found;
  const std::uint64_t end = packed_end(head);
  for (const PackedTag& packed : kPackedTags[last_of(end)]) {
    if ((end & packed.mask) != packed.end) continue;
    const std::size_t i = packed.tag;
    const Tag& tag = kTags[i];
    if (!ends_with_name(head, tag.name)) continue;
    const bool own = head.size() == tag.name.size();
    if (tag.place == Tag::kAtStart && !own) continue;
    if (tag.length == '\0' || tag.length == behind) {
      found.tags |= bit(i);
      if (own) found.own |= bit(i);
    }
    const bool odd_time = i == kTimeOn4 && behind != '4' && behind != '6';
    const bool odd_date = i == kQsoDate && behind != '8';
    found.odd_length = found.odd_length || odd_time || odd_date;
  }
  return found;
}

}  // namespace tobarine
