#include "callsign/overrides.h"

#include <system_error>

#include "text/error.h"
#include "text/input_file.h"
#include "text/strings.h"

namespace tobarine {
namespace {

std::vector<std::string> words_of(std::string_view line) {
  std::vector<std::string> words;
  line = line.substr(0, line.find('#'));
  std::size_t at = 0;
  while ((at = line.find_first_not_of(" \t", at)) != std::string_view::npos) {
    const std::size_t end = std::min(line.find_first_of(" \t", at), line.size());
    words.emplace_back(line.substr(at, end - at));
    at = end;
  }
  return words;
}

bool is_date(std::string_view text) {
  return text.size() == 8 && all_digits(text);
}

}  // namespace

void Overrides::load(const std::filesystem::path& path, const EntityList& entities) {
  entries_.clear();
  std::error_code error;
  if (!std::filesystem::exists(path, error)) return;
  std::size_t line_number = 0;
  for (const std::string& line : read_table_lines(path)) {
    ++line_number;
    const std::vector<std::string> words = words_of(line);
    if (words.empty()) continue;
    Entry entry{};
    if (words.size() >= 2) entry.dxcc = dxcc_number(words[1]);
    if (words.size() > 4 || entities.by_number(entry.dxcc) == nullptr) {
      throw RecordError(path, line_number, "コールと DXCC 番号 (と期間) の行として読めません");
    }
    for (std::size_t i = 2; i < words.size(); ++i) {
      if (words[i] == "-") continue;
      if (!is_date(words[i])) {
        throw RecordError(path, line_number, "日付は yyyymmdd で書いて下さい: " + words[i]);
      }
      (i == 2 ? entry.from : entry.to) = words[i];
    }
    entries_[upper(words[0])].push_back(entry);
  }
}

unsigned Overrides::find(std::string_view key, std::string_view date) const {
  const auto found = entries_.find(key);
  if (found == entries_.end()) return 0;
  for (const Entry& entry : found->second) {
    const bool dated = !entry.from.empty() || !entry.to.empty();
    if (dated && !is_date(date)) continue;
    if ((entry.from.empty() || date >= entry.from) && (entry.to.empty() || date <= entry.to)) {
      return entry.dxcc;
    }
  }
  return 0;
}

unsigned Overrides::find_prefix(std::string_view call, std::string_view date) const {
  for (std::size_t n = entries_.empty() ? 0 : call.size(); n > 0; --n) {
    if (const unsigned dxcc = find(call.substr(0, n), date); dxcc != 0) return dxcc;
  }
  return 0;
}

}  // namespace tobarine
