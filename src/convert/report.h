// What a run has done, as a value.
#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "rules/finding_advice.h"
#include "rules/findings.h"

namespace tobarine {

struct ConversionReport {
  std::size_t read = 0;     // contacts taken from the input
  std::size_t written = 0;  // contacts in the output
  FindingLog findings;
  bool in_records = false;  // the findings' lines are records of a binary log

  // Set when a record ended the run early: the message naming file, line and reason. The output
  // then holds the contacts before it.
  std::optional<std::string> stopped_by;
};

// The report as lines for people (UTF-8, each ended by LF), with what can be done; empty when there
// is nothing to tell.
std::string report_text(const ConversionReport& report, Front front);

// The findings that belong to a line as a table for spreadsheets: a heading row, then a row each,
// ended by LF.
std::string report_csv(const ConversionReport& report);

// What concerns the whole file, a line each: everyone should read it.
std::string file_notes(const ConversionReport& report, Front front);

}  // namespace tobarine
