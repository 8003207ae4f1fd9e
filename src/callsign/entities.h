// The list of DXCC entities, current and deleted (`dxcc_mas.txt`).
//
// File form: CP932 text; lines that begin with "#" are comments. Fixed columns, counted from 1:
//   1-3 DXCC number   5-12 prefix   14-15 continent   17-18 CQ zone   20-21 ITU zone
//   23 "D" for a deleted entity   25-36 its names in cty.dat, separated by commas; a name that
//   begins with "*" is an area that cty.dat lists apart but that counts as this entity
//   38- name
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace tobarine {

inline constexpr unsigned kLargestDxcc = 999;

struct Entity {
  std::uint16_t number;   // DXCC number, 1 .. 999
  std::string prefix;     // as Japanese operators write it: "JA", "W", "KH6", "KL", "UA0"
  std::string continent;  // "AS", "EU", ...
  std::uint8_t cq_zone;
  std::uint8_t itu_zone;
  bool deleted;
  std::vector<std::string> cty_names;  // the primary prefixes that cty.dat uses: "K", "*IT9"
  std::string name;
};

class EntityList {
 public:
  // Throws FileError, RecordError (a line that is no entity, a number that stands twice).
  void load(const std::filesystem::path& path);

  // nullptr when there is none. The list owns the entities.
  const Entity* by_number(unsigned number) const;
  const Entity* by_cty_name(std::string_view name) const;

  const std::vector<Entity>& all() const { return entities_; }

 private:
  std::vector<Entity> entities_;
  std::vector<std::int16_t> index_;  // by number; -1: none
};

// "1" .. "999" for an entity as ADIF writes it.
std::string dxcc_text(const Entity& entity);

// The DXCC number in a text that may have leading zeros and blanks around it; 0 when it is none.
unsigned dxcc_number(std::string_view text);

}  // namespace tobarine
