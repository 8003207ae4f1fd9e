// Whole files: a log, options and the expected output, compared byte for byte. To accept a change,
// run with TOBARINE_ACCEPT=1 and read what git shows.
#include <cstdlib>
#include <fstream>
#include <gtest/gtest.h>

#include "convert/h2l.h"
#include "test_folder.h"

namespace tobarine {
namespace {

struct Scenario {
  const char* expected;  // in tests/data
  AdifTarget target;
  H2lOptions options;
};

H2lOptions everything() {
  H2lOptions options;
  options.keep_full_width_rmks1 = true;
  options.keep_full_width_rmks2 = true;
  options.dx_marker_in_comment = true;
  options.slash_call_in_comment = true;
  options.write_name = true;
  options.write_qth = true;
  options.write_state = true;
  options.state_search = StateSearch::kKeywordThenWord;
  return options;
}

TEST(WholeFile, TheSampleLogGivesTheExpectedBytes) {
  const Scenario scenarios[] = {
      {"sample_defaults.adi", AdifTarget::kLogger32, {}},
      {"sample_everything.adi", AdifTarget::kLogger32, everything()},
      {"sample_eqsl.adi", AdifTarget::kEqsl, everything()},
  };
  ConversionTables tables;
  tables.load(TOBARINE_DATA);
  CallTables calls;
  calls.load(TOBARINE_DATA);
  const TestFolder folder;
  for (const Scenario& s : scenarios) {
    const H2lJob job{std::filesystem::path(TOBARINE_SAMPLES) / "hamlog.csv", folder / "out.adi",
                     s.options};
    const auto run = s.target == AdifTarget::kEqsl ? run_eqsl : run_h2l;
    const ConversionReport report = run(job, tables, calls, {});
    EXPECT_EQ(report.written, 48U);
    const std::string written = TestFolder::bytes_of(job.output);
    const std::filesystem::path expected = std::filesystem::path(TOBARINE_TEST_DATA) / s.expected;
    if (std::getenv("TOBARINE_ACCEPT") != nullptr) {
      std::ofstream(expected, std::ios::binary) << written;
    }
    EXPECT_TRUE(written == TestFolder::bytes_of(expected)) << s.expected;
  }
}

}  // namespace
}  // namespace tobarine
