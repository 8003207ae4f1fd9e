// Calls and prefixes of the DXCC entities (`dxcc_hl.dat`).
//
// File form: CP932 text, sorted by bytes; lines that begin with "#" are comments. Fixed columns:
//   1-20 a prefix, or "=" and a full call   22-24 DXCC number   26-27 CQ zone   29-30 ITU zone
//   32-33 continent
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace tobarine {

// Where a call or prefix belongs, as far as the table says.
struct PlaceData {
  std::uint16_t dxcc = 0;  // entity number
  std::uint8_t cq_zone = 0;
  std::uint8_t itu_zone = 0;
  std::array<char, 2> continent{};
};

// A hash table from short texts to places, made for being asked millions of times.
class PlaceMap {
 public:
  static constexpr std::size_t kLongestKey = 24;

  // Adds a key; a key that is there already keeps its first value. False: the key is too long.
  bool add(std::string_view key, const PlaceData& place);
  const PlaceData* find(std::string_view key) const;  // nullptr: not there
  std::size_t size() const { return size_; }

 private:
  using Key = std::array<std::uint64_t, kLongestKey / 8>;
  struct Slot {
    Key key{};  // all zero: free
    PlaceData place;
  };
  static Key pack(std::string_view text);
  std::size_t slot_of(const Key& key) const;
  void grow();

  std::vector<Slot> slots_;
  std::size_t size_ = 0;
  std::size_t longest_ = 0;
};

class PrefixTable {
 public:
  // Throws FileError, RecordError (a line that is no entry, lines out of order).
  void load(const std::filesystem::path& path);

  const PlaceData* full_call(std::string_view call) const { return calls_.find(call); }

  struct PrefixMatch {
    const PlaceData* place;
    std::size_t length;  // of the prefix
  };
  // The longest prefix that the call begins with.
  std::optional<PrefixMatch> longest_prefix(std::string_view call) const;

  // The place of two letters that the table lists only with a digit behind, when it lists them with
  // at least two digits and all for one entity (TU for TU0 .. TU9); nullptr otherwise.
  const PlaceData* without_digit(std::string_view prefix) const;

  std::size_t calls() const { return calls_.size(); }
  std::size_t prefixes() const { return prefixes_.size(); }
  std::size_t numbers() const { return numbers_.size(); }  // DXCC numbers

  // One line of the file, without its end.
  static std::string file_line(std::string_view key, const PlaceData& place);

 private:
  static std::size_t beginning(std::string_view text);
  void add_prefix(std::string_view prefix, const PlaceData& place);

  PlaceMap calls_;
  PlaceMap prefixes_;
  std::set<std::uint16_t> numbers_;
  // By the first two characters: bit n is set when a prefix of n characters begins with them.
  std::vector<std::uint32_t> lengths_;
};

}  // namespace tobarine
