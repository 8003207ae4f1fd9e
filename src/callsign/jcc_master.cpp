#include "callsign/jcc_master.h"

#include <algorithm>

#include "text/error.h"
#include "text/input_file.h"
#include "text/strings.h"

namespace tobarine {

void JccMaster::load(const std::filesystem::path& path) {
  std::vector<JccPlace> places;
  std::size_t line_number = 0;
  for (const std::string& line : read_table_lines(path)) {
    ++line_number;
    if (line.empty() || line[0] == '#') continue;
    std::vector<std::string> fields;
    for_each_piece(line, '\t', [&fields](std::string_view f) { fields.emplace_back(f); });
    if (fields.size() != 4 || !all_digits(fields[0]) || fields[3].empty()) {
      throw RecordError(path, line_number, "JCC、JCG、区の行として読めません");
    }
    if (!places.empty() && places.back().number >= fields[0]) {
      throw RecordError(path, line_number, "番号順に並んでいません");
    }
    places.push_back({fields[0], fields[1], fields[2], fields[3]});
  }
  places_ = std::move(places);
}

const JccPlace* JccMaster::find(std::string_view number) const {
  const auto found = std::ranges::lower_bound(places_, trim(number), {}, &JccPlace::number);
  return found != places_.end() && found->number == trim(number) ? &*found : nullptr;
}

std::string JccMaster::file_text(const std::vector<JccPlace>& places) {
  std::string text =
      "# JCC, JCG and ku numbers, made by \"tobarine-cli build jcc\".\n"
      "# Tab-separated: number, last day (empty: exists), prefecture, place name.\n";
  for (const JccPlace& p : places) {
    text += p.number + '\t' + p.abolished + '\t' + p.prefecture + '\t' + p.name + '\n';
  }
  return text;
}

}  // namespace tobarine
