#include "app/delivered_files.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <map>
#include <optional>

#include "app/settings.h"
#include "text/error.h"
#include "text/folder.h"
#include "text/input_file.h"
#include "text/output_file.h"
#include "text/strings.h"

namespace tobarine {
namespace {

namespace fs = std::filesystem;

using Record = std::map<std::string, std::uint64_t>;  // by file name

// What was delivered before there was a record. A changed file in data/ leaves its row here.
struct EarlierFile {
  std::string_view name;
  std::uint64_t checksum;
};
constexpr EarlierFile kEarlierFiles[] = {
    {"Band_tbl.ini", 0x8ae5fb55f1e6715e},
    {"JCC_JCG.mas", 0x2f7836b5a69f9b50},
    {"Mode_tbl.ini", 0x7224f2ba94bf1901},
    {"cty_license.txt", 0xef36f6e4fe1864e6},
    {"dxcc_hl.dat", 0x81de0638959c36f8},
    {"dxcc_mas.txt", 0xccbc3fe57584fe66},
    {"h2l_cty.mas", 0x724f917587e765d2},
    {"l2h_cty.mas", 0x6a69476f1b1deaa6},
    {"変換テーブルの説明.txt", 0x735a1e63f9ed9cc2},
};

bool was_delivered_before(std::string_view name, std::uint64_t sum) {
  return std::ranges::any_of(kEarlierFiles, [&](const EarlierFile& file) {
    return equal_ignoring_case(file.name, name) && file.checksum == sum;
  });
}

// Where the program's own folder is what was delivered, programs and perhaps logs stand among the
// files.
bool is_delivered_data(const fs::directory_entry& entry) {
  std::error_code error;
  if (!entry.is_regular_file(error)) return false;
  const std::string extension = path_text(entry.path().extension());
  constexpr std::array<std::string_view, 4> kData = {".dat", ".ini", ".mas", ".txt"};
  return std::ranges::any_of(
      kData, [&extension](std::string_view data) { return equal_ignoring_case(extension, data); });
}

// The settings are the user's from the first start on.
bool is_settings_file(std::string_view name) {
  return equal_ignoring_case(name, kSettingsFile);
}

std::vector<std::string> delivered_names(const fs::path& delivered) {
  std::vector<std::string> names;
  std::error_code error;
  for (fs::directory_iterator it(delivered, error), end; !error && it != end; it.increment(error)) {
    if (is_delivered_data(*it)) names.push_back(path_text(it->path().filename()));
  }
  std::ranges::sort(names);
  return names;
}

// A line that is none of ours does not count: its file is looked at as if it were not recorded.
Record read_record(const fs::path& folder) {
  Record record;
  const fs::path file = folder / kDeliveryRecord;
  std::error_code error;
  if (!fs::exists(file, error)) return record;
  for (const std::string& line : read_text_lines(file)) {
    const std::size_t tab = line.find('\t');
    if (tab == std::string::npos) continue;
    std::uint64_t sum = 0;
    const char* const end = line.data() + line.size();
    if (std::from_chars(line.data() + tab + 1, end, sum, 16).ptr == end) {
      record[line.substr(0, tab)] = sum;
    }
  }
  return record;
}

void write_record(const Record& record, const fs::path& folder) {
  std::string text;
  for (const auto& [name, sum] : record) {
    std::array<char, 16> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), sum, 16).ptr;
    text.append(name).append("\t").append(digits.data(), end).append("\n");
  }
  replace_text_file(folder / kDeliveryRecord, text);
}

enum class Fate { kSame, kAdd, kRenew, kKeep };

// What becomes of the user's file when `now` is delivered and `before` was the last time.
Fate fate_of(const std::string& name, const fs::path& users, std::uint64_t now,
             std::optional<std::uint64_t> before) {
  std::error_code error;
  if (!fs::exists(users, error)) return Fate::kAdd;
  if (before == now || (!before && was_delivered_before(name, now))) return Fate::kSame;
  const std::uint64_t his = checksum(read_whole_file(users));
  if (his == now) return Fate::kSame;
  return his == before || was_delivered_before(name, his) ? Fate::kRenew : Fate::kKeep;
}

std::string joined(const std::vector<std::string>& names) {
  std::string text;
  for (const std::string& name : names) text.append(text.empty() ? "" : "、").append(name);
  return text;
}

}  // namespace

std::uint64_t checksum(std::string_view bytes) {
  constexpr std::uint64_t kOffset = 0xcbf29ce484222325;
  constexpr std::uint64_t kPrime = 0x100000001b3;
  std::uint64_t sum = kOffset;
  for (const char c : bytes) sum = (sum ^ static_cast<unsigned char>(c)) * kPrime;
  return sum;
}

void copy_delivered_files(const fs::path& delivered, const fs::path& folder) {
  Record record;
  for (const std::string& name : delivered_names(delivered)) {
    const std::string bytes = read_whole_file(delivered / path_from_text(name));
    replace_file(folder / path_from_text(name), bytes);
    if (!is_settings_file(name)) record[name] = checksum(bytes);
  }
  write_record(record, folder);
}

DeliveryNews bring_in_deliveries(const fs::path& delivered, const fs::path& folder, bool told) {
  DeliveryNews news;
  try {
    const Record before = read_record(folder);
    Record record = before;
    for (const std::string& name : delivered_names(delivered)) {
      if (is_settings_file(name)) continue;
      try {
        const std::string bytes = read_whole_file(delivered / path_from_text(name));
        const std::uint64_t now = checksum(bytes);
        const auto last = before.find(name);
        const fs::path users = file_in(folder, name);
        const Fate fate = fate_of(
            name, users, now, last == before.end() ? std::nullopt : std::optional(last->second));
        if (fate == Fate::kAdd || fate == Fate::kRenew) replace_file(users, bytes);
        if (fate == Fate::kAdd) news.added.push_back(name);
        if (fate == Fate::kRenew) news.renewed.push_back(name);
        if (fate == Fate::kKeep) news.kept.push_back(name);
        if (fate != Fate::kKeep || told) record[name] = now;
      } catch (const Error& error) {
        news.failed.emplace_back(error.what());
      }
    }
    if (record != before) write_record(record, folder);
  } catch (const Error& error) {
    news.failed.emplace_back(error.what());
  }
  return news;
}

std::string delivery_text(const DeliveryNews& news, const fs::path& delivered,
                          const fs::path& folder) {
  std::string text;
  if (!news.added.empty()) {
    text += "足りないファイルを補いました: " + joined(news.added) + "\n";
  }
  if (!news.renewed.empty()) {
    text += "新しい版のファイルにしました: " + joined(news.renewed) + "\n";
  }
  if (!news.kept.empty()) {
    text += "新しい版のファイルがあります: " + joined(news.kept) +
            "。お使いのものは書き換えてあるので、そのままにしました。新しいものにするには、" +
            path_text(folder) + " にあるそのファイルの名前を変えてから、もう一度起動して下さい (" +
            path_text(delivered) + " から入ります)\n";
  }
  for (const std::string& reason : news.failed) {
    text += "新しい版のファイルを取り込めません: " + reason + "\n";
  }
  return text;
}

}  // namespace tobarine
