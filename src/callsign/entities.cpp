#include "callsign/entities.h"

#include <charconv>

#include "text/error.h"
#include "text/input_file.h"
#include "text/strings.h"

namespace tobarine {
namespace {

std::string_view column(std::string_view line, std::size_t from, std::size_t to) {
  return line.size() < from ? std::string_view() : trim(line.substr(from - 1, to - from + 1));
}

Entity parse_entity(std::string_view line) {
  Entity entity;
  entity.number = static_cast<std::uint16_t>(dxcc_number(column(line, 1, 3)));
  entity.prefix = column(line, 5, 12);
  entity.continent = column(line, 14, 15);
  entity.cq_zone = static_cast<std::uint8_t>(leading_number(column(line, 17, 18)));
  entity.itu_zone = static_cast<std::uint8_t>(leading_number(column(line, 20, 21)));
  entity.deleted = column(line, 23, 23) == "D";
  for_each_piece(column(line, 25, 36), ',',
                 [&entity](std::string_view name) { entity.cty_names.emplace_back(name); });
  entity.name = column(line, 38, line.size());
  return entity;
}

}  // namespace

void EntityList::load(const std::filesystem::path& path) {
  std::vector<Entity> entities;
  std::vector<std::int16_t> index(kLargestDxcc + 1, -1);
  std::size_t number_of_line = 0;
  for (const std::string& line : read_table_lines(path)) {
    ++number_of_line;
    if (is_blank(line) || line[0] == '#') continue;
    Entity entity = parse_entity(line);
    if (entity.number == 0 || entity.prefix.empty() || entity.continent.size() != 2 ||
        entity.name.empty()) {
      throw RecordError(path, number_of_line,
                        "DXCC エンティティの行として読めません "
                        "(DXCC 番号、プリフィックス、二文字の大陸、名前が要ります)");
    }
    if (index[entity.number] >= 0) {
      throw RecordError(path, number_of_line, "DXCC 番号 " + dxcc_text(entity) + " が二度あります");
    }
    index[entity.number] = static_cast<std::int16_t>(entities.size());
    entities.push_back(std::move(entity));
  }
  if (entities.empty()) throw FileError(path, "DXCC エンティティがありません");
  entities_ = std::move(entities);
  index_ = std::move(index);
}

const Entity* EntityList::by_number(unsigned number) const {
  if (number >= index_.size() || index_[number] < 0) return nullptr;
  return &entities_[static_cast<std::size_t>(index_[number])];
}

const Entity* EntityList::by_cty_name(std::string_view name) const {
  for (const Entity& entity : entities_) {
    for (const std::string& cty_name : entity.cty_names) {
      if (cty_name == name) return &entity;
    }
  }
  return nullptr;
}

std::string dxcc_text(const Entity& entity) {
  return std::to_string(entity.number);
}

unsigned dxcc_number(std::string_view text) {
  text = trim(text);
  unsigned number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  const bool whole = error == std::errc() && end == text.data() + text.size();
  return whole && number <= kLargestDxcc ? number : 0;
}

}  // namespace tobarine
