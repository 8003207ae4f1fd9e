#include "callsign/prefix_table.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

#include "text/error.h"
#include "text/input_file.h"
#include "text/strings.h"

namespace tobarine {
namespace {

constexpr std::size_t kKeyWidth = 20;
constexpr std::size_t kLineWidth = 33;

unsigned two_digits(std::string_view line, std::size_t at) {
  return is_digit(line[at]) && is_digit(line[at + 1])
             ? static_cast<unsigned>((line[at] - '0') * 10 + (line[at + 1] - '0'))
             : 0;
}

// The entry of a line; `dxcc` is 0 when the line is none.
PlaceData parse_place(std::string_view line) {
  PlaceData place;
  if (line.size() < kLineWidth || !is_digit(line[21]) || line[0] == ' ') return place;
  place.dxcc = static_cast<std::uint16_t>((line[21] - '0') * 100 + two_digits(line, 22));
  place.cq_zone = static_cast<std::uint8_t>(two_digits(line, 25));
  place.itu_zone = static_cast<std::uint8_t>(two_digits(line, 28));
  place.continent = {line[31], line[32]};
  return place;
}

}  // namespace

PlaceMap::Key PlaceMap::pack(std::string_view text) {
  Key key{};
  std::memcpy(key.data(), text.data(), text.size());
  return key;
}

std::size_t PlaceMap::slot_of(const Key& key) const {
  std::uint64_t hash =
      key[0] * 0x9E3779B97F4A7C15U ^ key[1] * 0xC2B2AE3D27D4EB4FU ^ key[2] * 0x165667B19E3779F9U;
  hash ^= hash >> 32;
  const std::size_t mask = slots_.size() - 1;
  std::size_t i = hash & mask;
  const auto differs = [&key](const Key& other) {
    return ((other[0] ^ key[0]) | (other[1] ^ key[1]) | (other[2] ^ key[2])) != 0;
  };
  while (slots_[i].key[0] != 0 && differs(slots_[i].key)) i = (i + 1) & mask;
  return i;
}

void PlaceMap::grow() {
  std::vector<Slot> old(std::max<std::size_t>(1024, slots_.size() * 2));
  old.swap(slots_);
  for (const Slot& slot : old) {
    if (slot.key[0] != 0) slots_[slot_of(slot.key)] = slot;
  }
}

bool PlaceMap::add(std::string_view key, const PlaceData& place) {
  if (key.empty() || key.size() > kLongestKey) return false;
  if (size_ * 2 >= slots_.size()) grow();
  const Key packed = pack(key);
  Slot& slot = slots_[slot_of(packed)];
  if (slot.key[0] != 0) return true;
  slot = {packed, place};
  ++size_;
  longest_ = std::max(longest_, key.size());
  return true;
}

const PlaceData* PlaceMap::find(std::string_view key) const {
  if (slots_.empty() || key.empty() || key.size() > longest_) return nullptr;
  const Slot& slot = slots_[slot_of(pack(key))];
  return slot.key[0] == 0 ? nullptr : &slot.place;
}

void PrefixTable::load(const std::filesystem::path& path) {
  PrefixTable loaded;
  LineReader reader(path);
  std::string previous;
  std::string_view line;
  while (reader.next(line)) {
    if (line.empty() || line[0] == '#') continue;
    const PlaceData place = parse_place(line);
    if (place.dxcc == 0) {
      throw RecordError(path, reader.line(), "プリフィックスの行として読めません");
    }
    const std::string_view key = trim(line.substr(0, kKeyWidth));
    if (key < previous) throw RecordError(path, reader.line(), "順番に並んでいません");
    previous = key;
    loaded.numbers_.insert(place.dxcc);
    if (key[0] == '=') {
      loaded.calls_.add(key.substr(1), place);
    } else {
      loaded.add_prefix(key, place);
    }
  }
  if (loaded.prefixes() == 0) throw FileError(path, "プリフィックスがありません");
  *this = std::move(loaded);
}

// Where the first two characters stand in lengths_; one character stands as with a NUL behind it.
std::size_t PrefixTable::beginning(std::string_view text) {
  const auto first = static_cast<unsigned char>(text[0]);
  const auto second = static_cast<unsigned char>(text.size() > 1 ? text[1] : '\0');
  return (first & 0x7FU) << 7 | (second & 0x7FU);
}

void PrefixTable::add_prefix(std::string_view prefix, const PlaceData& place) {
  lengths_.resize(std::size_t{1} << 14);
  prefixes_.add(prefix, place);
  lengths_[beginning(prefix)] |= 1U << prefix.size();
}

std::optional<PrefixTable::PrefixMatch> PrefixTable::longest_prefix(std::string_view call) const {
  if (call.empty() || lengths_.empty()) return std::nullopt;
  const std::uint32_t lengths = lengths_[beginning(call)] | lengths_[beginning(call.substr(0, 1))];
  for (std::size_t n = std::min(call.size(), PlaceMap::kLongestKey); n > 0; --n) {
    if ((lengths >> n & 1U) == 0) continue;
    if (const PlaceData* place = prefixes_.find(call.substr(0, n))) return PrefixMatch{place, n};
  }
  return std::nullopt;
}

const PlaceData* PrefixTable::without_digit(std::string_view prefix) const {
  const auto is_letter = [](char c) { return c >= 'A' && c <= 'Z'; };
  if (prefix.size() != 2 || !std::ranges::all_of(prefix, is_letter)) return nullptr;
  std::array<char, 3> key{prefix[0], prefix[1], '0'};
  const PlaceData* found = nullptr;
  int digits = 0;
  for (; key[2] <= '9'; ++key[2]) {
    const PlaceData* place = prefixes_.find({key.data(), key.size()});
    if (place == nullptr) continue;
    if (found != nullptr && found->dxcc != place->dxcc) return nullptr;
    found = place;
    ++digits;
  }
  return digits < 2 ? nullptr : found;
}

std::string PrefixTable::file_line(std::string_view key, const PlaceData& place) {
  std::array<char, 64> line{};
  static_cast<void>(std::snprintf(line.data(), line.size(), "%-20.20s %03u %02u %02u %.2s",
                                  std::string(key).c_str(), place.dxcc, place.cq_zone,
                                  place.itu_zone, place.continent.data()));
  return line.data();
}

}  // namespace tobarine
