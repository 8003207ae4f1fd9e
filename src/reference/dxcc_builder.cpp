#include "reference/dxcc_builder.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <map>
#include <set>
#include <utility>
#include <vector>

#include "callsign/prefix_table.h"
#include "text/cp932.h"
#include "text/error.h"
#include "text/input_file.h"
#include "text/strings.h"

namespace tobarine {
namespace {

constexpr std::size_t kHeaderFields = 8;
constexpr std::size_t kLongestKeyInFile = 20;

bool is_call_char(char c) {
  return (c >= 'A' && c <= 'Z') || is_digit(c) || c == '/';
}

bool is_continent(std::string_view text) {
  constexpr std::string_view kContinents[] = {"AF", "AN", "AS", "EU", "NA", "OC", "SA"};
  return std::ranges::find(kContinents, text) != std::end(kContinents);
}

// A piece of the file for a message.
std::string shown(std::string_view bytes) {
  constexpr std::size_t kShownBytes = 60;
  return from_cp932(bytes.substr(0, kShownBytes));
}

class CtyParser {
 public:
  CtyParser(std::filesystem::path path, const EntityList& entities)
      : path_(std::move(path)), entities_(entities) {}

  DxccFile run() {
    LineReader reader(path_);
    std::string_view line;
    while (reader.next(line)) {
      line_ = reader.line();
      const std::string_view text = trim(line);
      if (text.empty()) continue;
      if (in_list_) {
        read_list(text);
      } else {
        read_header(text);
      }
    }
    if (in_list_) fail("ファイルが途中で切れています (\";\" がありません)");
    if (result_.entities == 0) throw FileError(path_, "cty.dat ではありません (中身がありません)");
    return finish();
  }

 private:
  [[noreturn]] void fail(const std::string& reason) const {
    throw RecordError(path_, line_, reason);
  }

  std::uint8_t zone(std::string_view text, unsigned largest, const char* what) const {
    const double number = leading_number(text);
    if (!all_digits(text) || number < 1 || number > largest) {
      fail(std::string(what) + " として読めません: " + shown(text));
    }
    return static_cast<std::uint8_t>(number);
  }

  std::array<char, 2> continent(std::string_view text) const {
    if (!is_continent(text)) fail("大陸として読めません: " + shown(text));
    return {text[0], text[1]};
  }

  void read_header(std::string_view text) {
    std::vector<std::string_view> fields;
    for_each_piece(text, ':', [&fields](std::string_view f) { fields.push_back(trim(f)); });
    if (fields.size() != kHeaderFields + 1 || !fields.back().empty()) {
      fail("エンティティの行として読めません (\":\" で終わる欄が 8 個必要です)");
    }
    const Entity* entity = entities_.by_cty_name(fields[7]);
    if (entity == nullptr) {
      fail("dxcc_mas.txt に無いエンティティです: " + shown(fields[7]) + " (" + shown(fields[0]) +
           ")");
    }
    place_.dxcc = entity->number;
    place_.cq_zone = zone(fields[1], 40, "CQ ゾーン");
    place_.itu_zone = zone(fields[2], 90, "ITU ゾーン");
    place_.continent = continent(fields[3]);
    ++result_.entities;
    in_list_ = true;
  }

  void read_list(std::string_view text) {
    const bool last = text.back() == ';';
    if (!last && text.back() != ',') fail("行の終わりに \",\" も \";\" もありません");
    text.remove_suffix(1);
    for_each_piece(text, ',', [this](std::string_view item) { add(trim(item)); });
    in_list_ = !last;
  }

  void add(std::string_view item) {
    const std::size_t key_end = std::min(item.find_first_of("([<{~"), item.size());
    const std::string_view key = item.substr(0, key_end);
    const std::string_view name = key.starts_with('=') ? key.substr(1) : key;
    if (name.empty() || key.size() > kLongestKeyInFile) {
      fail("プリフィックスまたはコールとして読めません: " + shown(item));
    }
    for (const char c : name) {
      if (!is_call_char(c)) {
        fail("プリフィックスまたはコールとして読めません: " + shown(item));
      }
    }
    if (key.starts_with("=VER") && all_digits(key.substr(4))) {  // not a call: the file's version
      result_.version = name;
      return;
    }
    if (entries_.size() >= kMostDxccEntries) fail("プリフィックスとコールが多すぎます");
    const auto [entry, is_new] = entries_.emplace(key, place_of(item, key_end));
    if (!is_new && entry->second.dxcc != place_.dxcc) {
      fail(shown(key) + " が二つのエンティティにあります");
    }
  }

  PlaceData place_of(std::string_view item, std::size_t at) const {
    PlaceData place = place_;
    while (at < item.size()) {
      constexpr std::string_view kOpen = "([<{~";
      constexpr std::string_view kClose = ")]>}~";
      const std::size_t kind = kOpen.find(item[at]);
      const std::size_t close =
          kind == std::string_view::npos ? kind : item.find(kClose[kind], at + 1);
      if (close == std::string_view::npos) fail("括弧が閉じていません: " + shown(item));
      const std::string_view value = item.substr(at + 1, close - at - 1);
      if (kind == 0) place.cq_zone = zone(value, 40, "CQ ゾーン");
      if (kind == 1) place.itu_zone = zone(value, 90, "ITU ゾーン");
      if (kind == 3) place.continent = continent(value);
      at = close + 1;
    }
    return place;
  }

  DxccFile finish() {
    std::string& text = result_.text;
    text = "# DXCC prefixes and calls, made from cty.dat" +
           (result_.version.empty() ? "" : " " + result_.version) +
           " by \"tobarine-cli build dxcc\".\n"
           "# cty.dat: Copyright (c) 1994- Jim Reisert AD1C, MIT licence (see cty_license.txt).\n"
           "# Columns: prefix or =call, DXCC number, CQ zone, ITU zone, continent.\n";
    std::set<std::uint16_t> numbers;
    for (const auto& [key, place] : entries_) {
      text += PrefixTable::file_line(key, place) + '\n';
      ++(key[0] == '=' ? result_.calls : result_.prefixes);
      numbers.insert(place.dxcc);
    }
    result_.numbers = numbers.size();
    if (result_.prefixes == 0) throw FileError(path_, "cty.dat ではありません (コールだけです)");
    return std::move(result_);
  }

  std::filesystem::path path_;
  const EntityList& entities_;
  std::size_t line_ = 0;
  bool in_list_ = false;
  PlaceData place_;
  std::map<std::string, PlaceData, std::less<>> entries_;
  DxccFile result_;
};

// True when more than a tenth is gone.
bool shrinks(std::size_t before, std::size_t after) {
  return after * 10 < before * 9;
}

}  // namespace

DxccFile build_dxcc_file(const std::filesystem::path& cty_dat, const EntityList& entities) {
  return CtyParser(cty_dat, entities).run();
}

std::string dxcc_loss(const PrefixTable& before, const DxccFile& after) {
  const std::size_t entries = before.calls() + before.prefixes();
  const std::size_t left = after.calls + after.prefixes;
  if (!shrinks(entries, left) && !shrinks(before.numbers(), after.numbers)) return {};
  return "今の dxcc_hl.dat より大きく減ります (プリフィックスとコール " + std::to_string(entries) +
         " → " + std::to_string(left) + "、DXCC エンティティ " + std::to_string(before.numbers()) +
         " → " + std::to_string(after.numbers) + ")";
}

}  // namespace tobarine
