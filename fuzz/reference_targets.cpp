// The readers of the program folder's files, and those of the lists that they are built from; the
// words of a command line.
#include <algorithm>
#include <array>
#include <span>
#include <vector>

#include "app/option_table.h"
#include "app/settings.h"
#include "app/window_arguments.h"
#include "callsign/overrides.h"
#include "callsign/prefix_table.h"
#include "reference/dxcc_builder.h"
#include "reference/jcc_builder.h"
#include "tables.h"
#include "targets.h"
#include "text/cp932.h"
#include "text/error.h"
#include "text/input_file.h"
#include "text/output_file.h"
#include "text/printable.h"
#include "text/strings.h"
#include "text/utf8.h"

namespace tobarine::fuzz {
namespace {

void settings(std::string_view bytes) {
  const auto file = scratch_file("Tobarine.ini", bytes);
  try {
    write_settings(read_settings(file), file);
    const std::string once = bytes_of(file);
    const Settings again = read_settings(file);
    write_settings(again, file);
    // A value in two pairs of quotes loses one at each reading, as the profile calls have it.
    const bool quoted = bytes.find_first_of("\"'") != std::string_view::npos;
    const bool broken = has_invalid_byte(from_cp932(bytes));
    require(quoted || broken || bytes_of(file) == once, "settings are written as they were read");
    h2l_options(again);
    l2h_options(again, again.time_conversion);
    adif_to_zlog_options(again);
  } catch (const Error&) {
  }
}

// The words of a command line, one a line: whatever they are, what is told of them is one clean
// line.
void words(std::string_view bytes) {
  Settings settings = first_start_settings();
  std::vector<std::string> arguments = {"tobarine"};
  for_each_piece(bytes, '\n', [&](std::string_view word) {
    arguments.emplace_back(word);
    const std::string shown = printable(word);
    require(is_valid_utf8(shown) && printable(shown) == shown, "what is shown is clean");
    require(char_count(shown) == char_count(word), "every character shows");
    const std::size_t equals = std::min(word.find('='), word.size());
    const std::string_view value = word.substr(std::min(equals + 1, word.size()));
    try {
      set_setting(settings, word.substr(0, equals), value);
      const Option* const option = find_option(word.substr(0, equals));
      require(option != nullptr, "what can be set is an option");
      if (!option->values.empty()) require(option_value(settings, *option) == value, "as given");
    } catch (const UsageError& error) {
      require(printable(error.what()) == error.what(), "a message is clean");
    }
  });
  const WindowArguments parsed = parse_window_arguments(arguments);
  require(printable(parsed.problem) == parsed.problem, "a message is clean");
}

// Loads a table, saves it, and loads that: what a save keeps is there again.
void table(const std::filesystem::path& file, std::size_t columns, std::size_t most,
           std::size_t saved) {
  try {
    const std::vector<TableRow> before = read_table(file, columns, most);
    save_table(file, before, saved);
    const std::vector<TableRow> after = read_table(file, columns, most);
    for (std::size_t i = 0; i < after.size(); ++i) {
      // The form has no escape for a quote, and a broken byte may make a pair with what follows.
      const bool special = std::ranges::any_of(before[i], [](const std::string& text) {
        return contains(text, "\"") || has_invalid_byte(text);
      });
      if (special) break;
      require(after[i] == before[i], "a row is loaded as it was saved");
    }
  } catch (const Error&) {
  }
}

void band_table(std::string_view bytes) {
  table(scratch_file("Band_tbl.ini", bytes), BandTable::kColumns, BandTable::kRows,
        BandTable::kSaved);
}

void mode_table(std::string_view bytes) {
  table(scratch_file("Mode_tbl.ini", bytes), ModeTable::kColumns, ModeTable::kRows,
        ModeTable::kSaved);
}

void cty_dat(std::string_view bytes) {
  DxccFile built;
  try {
    built =
        build_dxcc_file(scratch_file("cty.dat", bytes), delivered<CallTables>().calls.entities());
  } catch (const Error&) {
    return;
  }
  const auto file = scratch_path("dxcc_hl.dat");
  replace_text_file(file, built.text);
  PrefixTable table;
  table.load(file);  // an Error from here is a finding
  require(table.calls() + table.prefixes() == built.calls + built.prefixes,
          "every prefix and call that was built can be loaded");
}

// The bytes as each of the three lists, the other two being sound.
void jarl_lists(std::string_view bytes) {
  const std::array<std::string, 3> sound = {to_cp932("北海道 01\n 0101 Sapporo 札幌\n"),
                                            to_cp932("北海道 01\n 01001 Akan 阿寒\n"),
                                            to_cp932("札幌市(0101)\n 010101 Chuo 中央\n")};
  const std::string list(bytes);
  stated_count(list);
  stated_date(list);
  for (std::size_t i = 0; i < sound.size(); ++i) {
    auto lists = sound;
    lists[i] = list;
    JccBuild built;
    try {
      built = build_jcc(lists);
    } catch (const Error&) {
      continue;
    }
    const auto file = scratch_path("JCC_JCG.mas");
    replace_text_file(file, JccMaster::file_text(built.places));
    JccMaster master;
    master.load(file);  // an Error from here is a finding
    require(master.places() == built.places, "every place that was built can be loaded");
    compare_jcc(built.places, {});
  }
}

void master_files(std::string_view bytes) {
  const auto file = scratch_file("master", bytes);
  const auto load = [](auto&& loading) {
    try {
      loading();
    } catch (const Error&) {
    }
  };
  load([&file] {
    EntityList entities;
    entities.load(file);
    for (const Entity& entity : entities.all()) {
      require(entities.by_number(entity.number) == &entity, "an entity is found by its number");
    }
  });
  load([&file] {
    PrefixTable table;
    table.load(file);
    (void)table.longest_prefix("JA1ZZZ");
    (void)table.full_call("");
  });
  load([&file] {
    Overrides overrides;
    overrides.load(file, delivered<CallTables>().calls.entities());
    overrides.find_prefix("JA1ZZZ", "20240229");
  });
  load([&file] {
    HamlogToDxcc codes;
    codes.load(file);
    for (const CodeRow& row : codes.rows()) (void)codes.find(row.code);
    replace_text_file(scratch_path("again"), h2l_file_text(codes.rows()));
  });
  load([&file] {
    DxccToHamlog codes;
    codes.load(file);
    for (const CodeRow& row : codes.rows()) (void)codes.find(row.dxcc);
    replace_text_file(scratch_path("again"), l2h_file_text(codes.rows()));
  });
  load([&file] {
    JccMaster master;
    master.load(file);
    for (const JccPlace& place : master.places()) {
      require(master.find(place.number) != nullptr, "a place is found by its number");
    }
  });
}

// A call on each line.
void calls(std::string_view bytes) {
  const CallAnalysis& analysis = delivered<CallTables>().calls;
  for (const std::string& call : text_lines(bytes)) {
    const CallPlace place = analysis.find(call, "20240229");
    require(place.entity == nullptr || place.entity->number <= kLargestDxcc,
            "a call belongs to an entity of the list or to none");
  }
}

constexpr Target kTargets[] = {
    {"settings", settings},
    {"words", words},
    {"band_table", band_table, {"data/Band_tbl.ini"}},
    {"mode_table", mode_table, {"data/Mode_tbl.ini"}},
    {"cty_dat", cty_dat},
    {"jarl_lists", jarl_lists},
    {"master_files", master_files},
    {"calls", calls},
};

}  // namespace

std::span<const Target> reference_targets() {
  return kTargets;
}

}  // namespace tobarine::fuzz
