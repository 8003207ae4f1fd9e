// Whole files: a log, options and the expected output, compared byte for byte. To accept a change,
// run with TOBARINE_ACCEPT=1 and read what git shows.
#include <cstdlib>
#include <fstream>
#include <gtest/gtest.h>
#include <map>

#include "app/settings.h"
#include "convert/adif_to_zlog.h"
#include "convert/h2l.h"
#include "convert/l2h.h"
#include "hamlog/hamlog_csv.h"
#include "paths.h"
#include "tables.h"
#include "test_folder.h"
#include "text/strings.h"

namespace tobarine {
namespace {

namespace fs = std::filesystem;

const fs::path kSamples = samples_folder();

void expect_bytes(const fs::path& written, const std::string& expected_name) {
  const fs::path expected = fs::path(expected_folder()) / expected_name;
  const std::string bytes = TestFolder::bytes_of(written);
  if (std::getenv("TOBARINE_ACCEPT") != nullptr) {
    std::ofstream(expected, std::ios::binary) << bytes;
  }
  EXPECT_TRUE(bytes == TestFolder::bytes_of(expected)) << expected_name;
}

H2lOptions every_h2l_option() {
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

TEST(WholeFile, HamlogSampleToAdif) {
  const struct {
    const char* expected;
    AdifTarget target;
    H2lOptions options;
  } scenarios[] = {
      {"sample_defaults.adi", AdifTarget::kLogger32, {}},
      {"sample_everything.adi", AdifTarget::kLogger32, every_h2l_option()},
      {"sample_eqsl.adi", AdifTarget::kEqsl, every_h2l_option()},
  };
  const TestFolder folder;
  for (const auto& s : scenarios) {
    const H2lJob job{kSamples / "hamlog.csv", folder / "out.adi", s.options};
    const auto run = s.target == AdifTarget::kEqsl ? run_eqsl : run_h2l;
    const ConversionReport report =
        run(job, delivered<ConversionTables>(), delivered<CallTables>(), {});
    EXPECT_EQ(report.written, 48U);
    expect_bytes(job.output, s.expected);
  }
}

// The same contest as a text and as a binary log.
TEST(WholeFile, ZlogSamplesToAdif) {
  const TestFolder folder;
  for (const H2lSource source : {H2lSource::kZlogAll, H2lSource::kZlogZlo}) {
    const bool binary = source == H2lSource::kZlogZlo;
    H2lJob job{kSamples / (binary ? "contest.zlo" : "contest.all"), folder / "out.adi", {}, source};
    job.zlog_zone = 'J';
    job.intermediate = folder / "zlog_1.csv";
    const ConversionReport report =
        run_h2l(job, delivered<ConversionTables>(), delivered<CallTables>(), {});
    EXPECT_EQ(report.read, 16U);
    EXPECT_EQ(report.findings.count(FindingKind::kOddField), 0U);
    expect_bytes(job.intermediate, "contest_zlog_1.csv");
    expect_bytes(job.output, "contest.adi");
    job.options.write_qth = true;
    job.options.slash_call_in_comment = true;
    run_eqsl(job, delivered<ConversionTables>(), delivered<CallTables>(), {});
    expect_bytes(job.output, "contest_eqsl.adi");
  }
}

ConversionReport to_hamlog(const fs::path& input, const fs::path& output,
                           const L2hOptions& options) {
  L2hState state;
  return run_l2h({input, output, options, {fs::temp_directory_path()}},
                 delivered<ConversionTables>(), delivered<CallTables>(), delivered<PlaceTables>(),
                 state, {});
}

TEST(WholeFile, AdifSamplesToHamlog) {
  const TestFolder folder;
  L2hOptions options;
  EXPECT_EQ(to_hamlog(kSamples / "logger32.adi", folder / "out.csv", options).written, 15U);
  expect_bytes(folder / "out.csv", "logger32_defaults.csv");
  options.remarks = {true, 1, true, "WAS="};
  options.write_qth = true;
  options.time_mode = TimeMode::kJapaneseToJst;
  to_hamlog(kSamples / "logger32.adi", folder / "out.csv", options);
  expect_bytes(folder / "out.csv", "logger32_everything.csv");
  options.time_mode = TimeMode::kAllJstFromAdif;
  EXPECT_EQ(to_hamlog(kSamples / "n1mm.adi", folder / "out.csv", options).written, 8U);
  expect_bytes(folder / "out.csv", "n1mm_jst.csv");
}

TEST(WholeFile, N1mmSampleToZlog) {
  const TestFolder folder;
  Settings settings = first_start_settings();
  for (const char* key : {"OP_name_tenki", "TX_NR_tenki", "COMMENT_tenki", "TX_NR_001",
                          "del_power_flag", "zlog_all_jst"}) {
    set_setting(settings, key, "1");
  }
  const AdifToZlogJob job{kSamples / "n1mm.adi", folder / "n1mm", adif_to_zlog_options(settings)};
  AdifToZlogState state;
  EXPECT_EQ(run_adif_to_zlog(job, delivered<ConversionTables>(), delivered<CallTables>(),
                             delivered<PlaceTables>(), state, {})
                .written,
            8U);
  expect_bytes(folder / "n1mm.all", "n1mm.all");
  expect_bytes(folder / "n1mm.zlo", "n1mm.zlo");
  expect_bytes(folder / "n1mm.csv", "n1mm_with_remarks.csv");
}

// Hamlog to ADIF and back keeps what both formats can hold.
TEST(RoundTrip, KeepsWhatBothFormatsHold) {
  const TestFolder folder;
  const fs::path original = kSamples / "hamlog.csv";
  run_h2l({original, folder / "a.adi", {}}, delivered<ConversionTables>(), delivered<CallTables>(),
          {});
  to_hamlog(folder / "a.adi", folder / "b.csv", {});
  // The original in UTC, as the way to ADIF makes it.
  const auto read_all = [](const fs::path& file) {
    HamlogLineReader reader(file, false);
    FindingLog findings;
    std::vector<QsoRecord> records;
    QsoRecord record;
    while (reader.next(record, findings)) {
      if (auto utc = shift_jst_to_utc(record.qso_date, record.time_on);
          utc && contains(record.time_on, "J")) {
        record.qso_date = utc->date;
        record.time_on = utc->time;
      }
      records.push_back(record);
    }
    return records;
  };
  const std::vector<QsoRecord> before = read_all(original);
  const std::vector<QsoRecord> after = read_all(folder / "b.csv");
  // What one direction cannot carry; see docs/round-trip.md.
  const std::map<std::string, std::string> changed = {
      {"JA1QNN", "freq"},  // the band came from the remarks, so no FREQ was written
      {"JA4QXX", "time"},  // no zone letter: it comes back as UTC
      {"JA4QXZ", "time"},  // a date that does not exist is not shifted
      {"JA4QXY", "time"},  // no time of day
      {"JD1QQL", "code"},  // a code that is in no list
  };
  ASSERT_EQ(after.size(), before.size());
  for (std::size_t i = 0; i < before.size(); ++i) {
    const QsoRecord& a = before[i];
    const QsoRecord& b = after[i];
    const auto known = changed.find(a.call);
    const std::string except = known == changed.end() ? "" : known->second;
    EXPECT_EQ(trim(b.call), a.call);
    EXPECT_EQ(b.qso_date, a.qso_date) << a.call;
    if (except != "time") {
      EXPECT_EQ(b.time_on, a.time_on) << a.call;
    }
    EXPECT_EQ(b.his_rst, a.his_rst) << a.call;
    EXPECT_EQ(b.my_rst, a.my_rst) << a.call;
    const std::string freq = a.freq.ends_with('.') ? a.freq.substr(0, a.freq.size() - 1) : a.freq;
    if (except != "freq") {
      EXPECT_EQ(b.freq, freq) << a.call;
    }
    EXPECT_EQ(trim(b.mode), upper(a.mode)) << a.call;
    EXPECT_EQ(trim(b.grid), a.grid) << a.call;
    const bool numbered = !a.code.empty() && a.code < "500";
    if (numbered) {
      EXPECT_EQ(b.code, a.code) << a.call;
    }
    for (const std::size_t mark : {1U, 2U}) {
      const bool marked = mark < a.qsl.size() && a.qsl[mark] != ' ';
      EXPECT_EQ(b.qsl[mark] != ' ', marked) << a.call;
    }
    if (a.qsl[0] == 'M' && contains(a.rmks1 + a.rmks2, "@")) {
      EXPECT_EQ(b.qsl[0], 'M') << a.call;
    }
  }
}

}  // namespace
}  // namespace tobarine
