// The tables of the program folder that conversions need.
#pragma once

#include <filesystem>

#include "callsign/call_analysis.h"
#include "callsign/hamlog_codes.h"
#include "callsign/jcc_master.h"
#include "rules/conversion_tables.h"

namespace tobarine {

// The user's tables, loaded when the program starts.
struct ConversionTables {
  BandTable bands;
  ModeTable modes;

  void load(const std::filesystem::path& folder);  // throws FileError, RecordError
};

// The tables of the call-sign analysis, loaded before the first conversion and kept.
struct CallTables {
  CallAnalysis calls;
  HamlogToDxcc codes;

  void load(const std::filesystem::path& folder);        // throws FileError, RecordError
  void load_codes(const std::filesystem::path& folder);  // these only; see asks_for_calls()
};

// The tables of the way from ADIF to Hamlog.
struct PlaceTables {
  DxccToHamlog codes;
  JccMaster jcc;

  void load(const std::filesystem::path& folder);  // throws FileError, RecordError
};

}  // namespace tobarine
