// Whole runs, from a file to a file.
#include <algorithm>
#include <charconv>

#include "app/settings.h"
#include "convert/adif_to_zlog.h"
#include "convert/h2l.h"
#include "convert/l2h.h"
#include "tables.h"
#include "targets.h"
#include "text/error.h"
#include "zlog/all_reader.h"
#include "zlog/zlo_record.h"

namespace tobarine::fuzz {
namespace {

// Options of all kinds, chosen by the last byte of the input.
Settings some_settings(std::string_view bytes) {
  Settings settings = first_start_settings();
  const unsigned choice = bytes.empty() ? 0 : static_cast<unsigned char>(bytes.back());
  const std::initializer_list<std::string_view> keys[] = {
      {"Chk_5", "Chk_6", "COMMENT_tenki"}, {"Chk_7", "Chk_8", "OP_name_tenki", "AGE_tenki"},
      {"Chk_9", "Chk_16", "csv_qth"},      {"Chk_10", "TX_NR_001", "IOTA_tenki"},
      {"Chk_11", "del_power_flag"},        {"Chk_14", "TX_NR_tenki", "zlog_all_jst"},
      {"Chk_3", "freq_only_MHz_2"},        {"Op_2", "Op_3"}};
  for (unsigned bit = 0; bit < std::size(keys); ++bit) {
    if ((choice >> bit & 1) == 0) continue;
    for (const std::string_view key : keys[bit]) set_setting(settings, key, "1");
  }
  return settings;
}

// The records of an ADIF text, read as the standard has it: by the length of each value. Dates and
// times, which stand there as the log has them under a fixed length, are passed over.
std::size_t count_adif_records(std::string_view adif) {
  std::size_t records = 0;
  std::size_t at = adif.find("<EOH>");
  require(at != std::string_view::npos, "the header ends");
  at += 5;
  while ((at = adif.find('<', at)) != std::string_view::npos) {
    const std::size_t end = adif.find_first_of(":>", at);
    require(end != std::string_view::npos, "a tag ends");
    const std::string_view name = adif.substr(at + 1, end - at - 1);
    require(!name.empty() && std::ranges::all_of(
                                 name, [](char c) { return (c >= 'A' && c <= 'Z') || c == '_'; }),
            "a tag has a name, so the length before it is right");
    if (adif[end] == '>') {
      require(name == "EOR", "only the record's end has no length");
      ++records;
      at = end + 1;
      continue;
    }
    if (name == "QSO_DATE") {
      at = adif.find(" <TIME_ON:4>", end);
    } else if (name == "TIME_ON") {
      at = adif.find(" <MODE:", end);
    } else {
      std::size_t length = 0;
      const auto number = std::from_chars(&adif[end + 1], adif.data() + adif.size(), length);
      require(number.ec == std::errc() && *number.ptr == '>', "a length is a number");
      at = static_cast<std::size_t>(number.ptr - adif.data()) + 1 + length;
      require(at <= adif.size(), "a value ends in the file");
    }
  }
  return records;
}

// Outputs of the runs before: what is not one of our own ADIF files would be kept.
void remove_outputs() {
  for (const std::string_view name : {"out.csv", "out.all", "out.zlo", "zlog_1.csv"}) {
    std::filesystem::remove(scratch_path(name));
  }
}

void to_adif(std::string_view bytes, H2lSource source, decltype(run_h2l)& run) {
  remove_outputs();
  const Settings settings = some_settings(bytes);
  H2lJob job{scratch_file("log", bytes), scratch_path("out.adi"), h2l_options(settings), source};
  job.zlog_zone = zlog_zone(settings);
  job.intermediate = scratch_path("zlog_1.csv");
  try {
    const ConversionReport report =
        run(job, delivered<ConversionTables>(), delivered<CallTables>(), {});
    require(count_adif_records(bytes_of(job.output)) == report.written,
            "as many records as were reported are in the ADIF");
    report_text(report, Front::kWindow);
  } catch (const Error&) {
  }
  require(bytes_of(job.input) == bytes, "the input stays as it is");
}

void run_h2l_target(std::string_view bytes) {
  to_adif(bytes, H2lSource::kHamlogCsv, run_h2l);
}
void run_eqsl_target(std::string_view bytes) {
  to_adif(bytes, H2lSource::kHamlogCsv, run_eqsl);
}
void run_all(std::string_view bytes) {
  to_adif(bytes, H2lSource::kZlogAll, run_h2l);
}
void run_zlo(std::string_view bytes) {
  to_adif(bytes, H2lSource::kZlogZlo, run_eqsl);
}

void run_l2h_target(std::string_view bytes) {
  remove_outputs();
  const Settings settings = some_settings(bytes);
  const L2hJob job{scratch_file("log", bytes),
                   scratch_path("out.csv"),
                   l2h_options(settings, static_cast<int>(bytes.size() % 4)),
                   {scratch_path("")},
                   AdifReading::kClassic};
  L2hState state;
  try {
    const ConversionReport report =
        run_l2h(job, delivered<ConversionTables>(), delivered<CallTables>(),
                delivered<PlaceTables>(), state, {});
    const std::string csv = bytes_of(job.output);
    require(csv.find("//") == std::string::npos, "no line with // is in the CSV");
    const auto lines = static_cast<std::size_t>(std::ranges::count(csv, '\n'));
    require(lines == report.written, "as many lines as were reported are in the CSV");
    const auto quotes = static_cast<std::size_t>(std::ranges::count(csv, '"'));
    require(quotes == lines * 30, "every line has fifteen columns");
    report_text(report, Front::kWindow);
  } catch (const Error&) {
  }
  require(bytes_of(job.input) == bytes, "the input stays as it is");
}

void run_adif_to_zlog_target(std::string_view bytes) {
  remove_outputs();
  const AdifToZlogJob job{scratch_file("log", bytes), scratch_path("out"),
                          adif_to_zlog_options(some_settings(bytes)), AdifReading::kClassic};
  AdifToZlogState state;
  try {
    const ConversionReport report =
        run_adif_to_zlog(job, delivered<ConversionTables>(), delivered<CallTables>(),
                         delivered<PlaceTables>(), state, {});
    require(bytes_of(job.output(".zlo")).size() == (report.written + 1) * zlo::kRecordSize,
            "as many records as were reported are in the .ZLO");
    require(count_all_contacts(job.output(".all")) == report.written,
            "as many lines as were reported are in the .ALL");
    report_text(report, Front::kWindow);
  } catch (const Error&) {
  }
  require(bytes_of(job.input) == bytes, "the input stays as it is");
}

constexpr Target kTargets[] = {
    {"run_h2l", run_h2l_target, {"samples/hamlog.csv"}},
    {"run_eqsl", run_eqsl_target, {"samples/hamlog.csv"}},
    {"run_all", run_all, {"samples/contest.all"}},
    {"run_zlo", run_zlo, {"samples/contest.zlo"}},
    {"run_l2h", run_l2h_target, {"samples/logger32.adi", "samples/n1mm.adi"}},
    {"run_adif2zlog", run_adif_to_zlog_target, {"samples/n1mm.adi", "samples/logger32.adi"}},
};

}  // namespace

std::span<const Target> run_targets() {
  return kTargets;
}

}  // namespace tobarine::fuzz
