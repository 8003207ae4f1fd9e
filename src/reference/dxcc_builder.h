// Builds `dxcc_hl.dat` from a `cty.dat`.
//
// cty.dat is the contest programs' country file: for each entity one line of eight fields ended by
// colons (name, CQ zone, ITU zone, continent, latitude, longitude, time zone, primary prefix), then
// its prefixes and, with "=", full calls, separated by commas and ended by a semicolon. Behind one
// may stand (CQ zone), [ITU zone], <position>, {continent} and ~time zone~.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>

#include "callsign/entities.h"
#include "callsign/prefix_table.h"

namespace tobarine {

struct DxccFile {
  std::string text;          // the new file, lines ended by LF
  std::string version;       // "VER20230502", or empty when cty.dat names none
  std::size_t entities = 0;  // as cty.dat counts, areas of the WAE list included
  std::size_t numbers = 0;   // DXCC numbers
  std::size_t prefixes = 0;
  std::size_t calls = 0;
};

// More entries than any list of the world's calls will hold: the file is something else.
inline constexpr std::size_t kMostDxccEntries = 100'000;

// Areas that exist for the WAE list only (primary prefix with "*") count as their DXCC entity.
// Throws FileError, and RecordError for anything that is not as described: a damaged file yields
// nothing.
DxccFile build_dxcc_file(const std::filesystem::path& cty_dat, const EntityList& entities);

// Why a new file should not take the place of an old one without being asked for: it has lost more
// than a tenth of the entries or of the DXCC numbers. Empty: nothing speaks against it.
std::string dxcc_loss(const PrefixTable& before, const DxccFile& after);

}  // namespace tobarine
