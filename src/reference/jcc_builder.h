// Builds `JCC_JCG.mas` from the three lists the league publishes: jcc-list.txt (cities, and the
// wards of Tokyo), jcg-list.txt (guns) and ku-list.txt (wards of the other cities), CP932.
//
// Their shape: title lines; a line for each prefecture with its two-digit number, or in the ward
// list for each city with its number in brackets; entries with number, name in Latin letters and
// name in kanji; "*" or "※" at the number of an abolished one, and its last day behind; under a gun
// its towns, without numbers. Blanks, tabs and full-width blanks stand here and there.
#pragma once

#include <array>
#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "callsign/jcc_master.h"

namespace tobarine {

struct JccCount {
  std::size_t current = 0;
  std::size_t abolished = 0;

  bool operator==(const JccCount&) const = default;
};

struct JccBuild {
  std::vector<JccPlace> places;  // sorted by number
  JccCount cities;               // the wards of Tokyo included, as the list counts
  JccCount guns;
  JccCount wards;
  // "file: line: reason: text", for people; of very many only the first, and how many there are.
  std::vector<std::string> problems;
  // For people: each list that holds another number of places than its first lines say.
  std::vector<std::string> miscounts;
};

// The lists' file names, in the order cities, guns, wards.
inline constexpr std::array<std::string_view, 3> kListFiles = {"jcc-list.txt", "jcg-list.txt",
                                                               "ku-list.txt"};

// Far more than Japan has ever had: a list with more is something else.
inline constexpr std::size_t kMostPlaces = 20'000;
inline constexpr std::size_t kLargestList = 1'000'000;  // bytes

// The same from the lists' bytes, in that order.
JccBuild build_jcc(const std::array<std::string, 3>& lists);

// How many places a list says it holds, in its first lines; both 0 when it does not say.
JccCount stated_count(std::string_view list);

// The date a list says it is of, in its first lines, as yyyy/mm/dd; empty when it does not say.
std::string stated_date(std::string_view list);

// Reads the lists from the folder. A line that looks like an entry and cannot be read is a problem,
// not a failure; a file without any entry is a failure. Throws FileError, RecordError.
JccBuild build_jcc(const std::filesystem::path& folder);

// What a new master changes against an old one, as lines for people.
struct JccChanges {
  std::vector<std::string> added;
  std::vector<std::string> abolished;
  std::vector<std::string> renamed;
  std::vector<std::string> removed;
};
JccChanges compare_jcc(const std::vector<JccPlace>& before, const std::vector<JccPlace>& after);

// The build's miscounts in one line; empty when there are none.
std::string miscount_text(const JccBuild& build);

// Why a new master should not take the place of an old one of so many places without being asked
// for: a list is not complete, or more than a tenth of the places is gone. Empty: nothing speaks
// against it.
std::string jcc_loss(std::size_t places_before, const JccChanges& changes, const JccBuild& build);

}  // namespace tobarine
