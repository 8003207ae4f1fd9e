// The run from ADIF to Hamlog's CSV, for tests.
#pragma once

#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "convert/l2h.h"
#include "tables.h"
#include "test_folder.h"
#include "text/cp932.h"
#include "text/strings.h"

namespace tobarine {

class L2h : public ::testing::Test {
 protected:
  // The CSV (UTF-8) of an ADIF text, given as UTF-8 and written as CP932.
  std::string run(const std::string& adif) { return run_bytes(to_cp932("<EOH>\r\n" + adif)); }

  std::string run_bytes(const std::string& bytes) {
    const L2hJob job{
        folder_.file("in.adi", bytes), folder_ / "out.csv", options_, {temporary_}, reading_};
    report_ = run_l2h(job, delivered<ConversionTables>(), delivered<CallTables>(),
                      delivered<PlaceTables>(), state_, {});
    return from_cp932(TestFolder::bytes_of(job.output));
  }

  // One column (from 1) of the contact made of these tags.
  std::string column(std::size_t number, const std::string& tags) {
    const std::string csv =
        run("<CALL:6>W1AW<QSO_DATE:8>20240501<TIME_ON:4>1205" + tags + "<EOR>\r\n");
    std::vector<std::string> columns;
    for_each_piece(csv, '"', [&columns](std::string_view piece) { columns.emplace_back(piece); });
    return columns.size() < 30 ? "-" : columns[number * 2 - 1];
  }

  // What was told of a kind, joined.
  std::string texts(FindingKind kind) const {
    std::string result;
    for (const Finding& finding : report_.findings.kept()) {
      if (finding.kind == kind) result += (result.empty() ? "" : "|") + finding.text;
    }
    return result;
  }

  std::size_t told(FindingKind kind) const { return report_.findings.count(kind); }

  TestFolder folder_;
  std::filesystem::path temporary_ = folder_.path();
  L2hOptions options_;
  AdifReading reading_ = AdifReading::kClassic;
  L2hState state_;
  ConversionReport report_;
};

}  // namespace tobarine
