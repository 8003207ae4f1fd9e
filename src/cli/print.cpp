#include "cli/print.h"

#include <initializer_list>
#include <iostream>
#include <nlohmann/json.hpp>

#include "app/option_table.h"
#include "text/error.h"
#include "text/printable.h"

namespace tobarine {
namespace {

using Json = nlohmann::ordered_json;

// Characters that a terminal would obey are written as their numbers.
void print_json(const Json& json, int indent, std::ostream& out = std::cout) {
  const auto text = [&](bool ascii) {
    return json.dump(indent, ' ', ascii, Json::error_handler_t::replace);
  };
  const std::string plain = text(false);
  out << (printable_lines(plain) == plain ? plain : text(true)) << '\n';
}

void print_fields(std::initializer_list<std::string_view> fields) {
  const char* before = "";
  for (const std::string_view field : fields) {
    std::cout << before << printable(field);
    before = "\t";
  }
  std::cout << '\n';
}

Json findings_json(const FindingLog& findings) {
  Json kinds = Json::array();
  for (int k = 0; k < static_cast<int>(FindingKind::kCount); ++k) {
    const auto kind = static_cast<FindingKind>(k);
    if (findings.count(kind) == 0) continue;
    Json items = Json::array();
    for (const Finding& f : findings.kept()) {
      if (f.kind == kind) items.push_back({{"line", f.line}, {"call", f.call}, {"text", f.text}});
    }
    kinds.push_back({{"kind", finding_name(kind)},
                     {"heading", finding_heading(kind)},
                     {"count", findings.count(kind)},
                     {"items", std::move(items)}});
  }
  return kinds;
}

std::string_view source_name(ZoneSource source) {
  switch (source) {
    case ZoneSource::kFile:
      return "file";
    case ZoneSource::kContest:
      return "contest";
    case ZoneSource::kChosen:
      return "setting";
    case ZoneSource::kAssumed:
      break;
  }
  return "none";
}

}  // namespace

void print_note(const CliOptions& options, std::string_view text) {
  if (!options.quiet) std::cerr << printable(text) << '\n';
}

void print_run(const CliOptions& options, const RunNames& names, const ConversionReport& report) {
  if (report.stopped_by) std::cerr << "tobarine-cli: " << *report.stopped_by << '\n';
  if (options.quiet) return;
  std::ostream& out = options.output == kStandard ? std::cerr : std::cout;
  if (options.json) {
    Json json = {{"kind", names.kind}, {"input", names.input}};
    if (names.outputs.size() == 1) {
      json["output"] = names.outputs[0];
    } else {
      json["outputs"] = names.outputs;
    }
    json["read"] = report.read;
    json["written"] = report.written;
    json["lines_are"] = report.in_records ? "records" : "lines";
    json["error"] = report.stopped_by ? Json(*report.stopped_by) : Json(nullptr);
    json["findings"] = findings_json(report.findings);
    print_json(json, 2, out);
    return;
  }
  out << "入力数: " << report.read << " 件\n変換数: " << report.written << " 件\n";
  out << (report.stopped_by ? "途中で止まりました\n" : "処理終了\n");
  if (options.report) out << report_text(report, Front::kCommandLine);
  for (const std::string& output : names.outputs)
    std::cerr << "出力: " << printable(output) << '\n';
  if (options.report) return;
  std::cerr << file_notes(report, Front::kCommandLine);
  if (const std::size_t told = report.findings.about_contacts(); told > 0) {
    std::cerr << "お知らせが " << told << " 件あります (--report で表示します)\n";
  }
}

void print_info(const CliOptions& options, const LogInfo& info) {
  if (options.quiet) return;
  if (options.json) {
    Json json = {{"kind", info.kind}, {"label", info.label}};
    if (!info.layout.empty()) json["layout"] = info.layout;
    if (info.contacts) json["contacts"] = *info.contacts;
    if (info.contest) {
      json["contest"] = info.contest->name;
      json["dx_contest"] = info.contest->is_dx;
    }
    if (info.zone) {
      json["zone"] = zone_name(info.zone->letter);
      json["zone_from"] = source_name(info.zone->source);
    }
    if (!info.note.empty()) json["note"] = info.note;
    print_json(json, 2);
    return;
  }
  std::cout << "種類: " << info.kind << " (" << info.label << ")\n";
  if (!info.layout.empty()) std::cout << "形式: " << info.layout << '\n';
  if (info.contest) {
    std::cout << "コンテスト: "
              << (info.contest->name.empty() ? "(なし)" : printable(info.contest->name))
              << "\nDX コンテスト: " << (info.contest->is_dx ? "はい" : "いいえ") << '\n';
  }
  if (info.zone) std::cout << "時刻: " << zone_text(*info.zone) << '\n';
  if (info.contacts) std::cout << "入力数: " << *info.contacts << " 件\n";
  if (!info.note.empty()) std::cout << info.note << '\n';
}

void print_settings(const CliOptions& options, const Settings& settings) {
  if (options.quiet) return;
  Json json = Json::array();
  for (const Option& option : option_table()) {
    const std::string value = option_value(settings, option);
    Json values = Json::array();
    for (const OptionValue& v : option.values) {
      values.push_back({{"value", v.value}, {"meaning", v.meaning}});
    }
    json.push_back({{"name", option.name},
                    {"key", option.key},
                    {"section", option.section},
                    {"value", value},
                    {"first", option.first},
                    {"values", std::move(values)},
                    {"meaning", option.meaning}});
    if (options.json) continue;
    std::cout << option.name << '=' << printable(value) << "  (" << option.key
              << "): " << option.meaning << "\n    " << allowed_values(option) << '\n';
  }
  if (options.json) print_json(json, 2);
}

void print_call(const CliOptions& options, const std::string& call, const CallPlace& place) {
  const bool known = place.entity != nullptr;
  const unsigned dxcc = known ? place.entity->number : 0;
  if (!options.json) {
    print_fields({call, place.prefix(), std::to_string(dxcc), place.qth()});
    return;
  }
  Json json = {{"call", call}, {"prefix", place.prefix()}, {"dxcc", dxcc}, {"qth", place.qth()}};
  if (known) {
    json["name"] = place.entity->name;
    json["continent"] = place.continent;
    json["cq_zone"] = place.cq_zone;
    json["itu_zone"] = place.itu_zone;
    json["deleted"] = place.entity->deleted;
  }
  print_json(json, -1);
}

void print_code(const CliOptions& options, const std::string& code, std::string_view dxcc) {
  if (options.json) {
    print_json({{"code", code}, {"dxcc", dxcc}}, -1);
  } else {
    print_fields({code, dxcc});
  }
}

void print_dxcc_file(const CliOptions& options, const DxccFile& built, const std::string& output) {
  if (options.quiet) return;
  if (options.json) {
    print_json({{"output", output},
                {"version", built.version},
                {"entities", built.entities},
                {"prefixes", built.prefixes},
                {"calls", built.calls}},
               2);
    return;
  }
  std::cout << printable_lines(dxcc_text(built)) << "処理終了\n";
  std::cerr << "出力: " << printable(output) << '\n';
}

void print_jcc(const CliOptions& options, const std::string& number, const JccPlace* place) {
  const std::string name = place == nullptr ? "" : place->name;
  if (!options.json) {
    print_fields({number, place == nullptr ? number : place->number, name});
    return;
  }
  Json json = {{"number", number}, {"name", name}};
  if (place != nullptr) {
    json["prefecture"] = place->prefecture;
    json["abolished"] = place->abolished;
  }
  print_json(json, -1);
}

void print_jcc_build(const CliOptions& options, const JccRenewal& renewal,
                     const std::string& output) {
  if (options.quiet) return;
  const JccBuild& built = renewal.build;
  const JccChanges& changes = renewal.changes;
  const auto count_json = [](const JccCount& count) {
    return Json{{"current", count.current}, {"abolished", count.abolished}};
  };
  if (options.json) {
    print_json({{"output", output},
                {"cities", count_json(built.cities)},
                {"guns", count_json(built.guns)},
                {"wards", count_json(built.wards)},
                {"added", changes.added},
                {"abolished", changes.abolished},
                {"renamed", changes.renamed},
                {"removed", changes.removed},
                {"problems", built.problems}},
               2);
    return;
  }
  std::cout << printable_lines(jcc_text(renewal)) << "処理終了\n";
  std::cerr << "出力: " << printable(output) << '\n';
}

void print_jarl_dates(const CliOptions& options, const JarlDates& server,
                      const std::array<std::string, 3>& ours) {
  if (options.quiet) return;
  if (!options.json) {
    std::cout << printable_lines(list_dates_text(server, ours));
    return;
  }
  Json json = Json::array();
  for (std::size_t i = 0; i < ours.size(); ++i) {
    json.push_back({{"file", kListFiles[i]},
                    {"server", server.dates[i]},
                    {"ours", ours[i]},
                    {"new", is_newer_list(server.dates[i], ours[i])}});
  }
  print_json(json, 2);
}

void print_jarl_download(const CliOptions& options, const JarlLists& fetched,
                         const std::string& folder) {
  if (options.quiet) return;
  Json json = {{"folder", folder}, {"lists", Json::array()}};
  for (std::size_t i = 0; i < kListFiles.size(); ++i) {
    json["lists"].push_back({{"file", kListFiles[i]}, {"date", fetched.dates[i]}});
    if (!options.json) std::cout << kListFiles[i] << ": " << printable(fetched.dates[i]) << '\n';
  }
  if (options.json) {
    print_json(json, 2);
    return;
  }
  std::cout << "処理終了\n";
  std::cerr << "出力: " << printable(folder)
            << "\nJCC_JCG.mas を作るには: tobarine-cli build jcc\n";
}

void print_learned(const CliOptions& options, const CodesLearned& learned) {
  if (options.quiet) return;
  if (!options.json) {
    std::cout << printable_lines(learned_text(learned)) << "処理終了\n";
    for (const std::filesystem::path& file : learned.files) {
      std::cerr << "出力: " << printable(path_text(file)) << '\n';
    }
    return;
  }
  Json json = {{"files", Json::array()}, {"codes", Json::array()}};
  for (const std::filesystem::path& file : learned.files) json["files"].push_back(path_text(file));
  for (const CodeVerdict& v : learned.verdicts) {
    json["codes"].push_back({{"code", v.code},
                             {"verdict", verdict_name(v.kind)},
                             {"dxcc", v.entity == nullptr ? 0 : v.entity->number},
                             {"contacts", v.contacts},
                             {"agreeing", v.agreeing}});
  }
  print_json(json, 2);
}

void ProgressBar::show(double done) {
  if (!enabled_) return;
  constexpr auto kQuietTime = std::chrono::seconds(1);
  constexpr auto kInterval = std::chrono::milliseconds(100);
  const auto now = Clock::now();
  if (now - start_ < kQuietTime || now - last_ < kInterval) return;
  last_ = now;
  shown_ = true;
  constexpr int kWidth = 40;
  const int filled = static_cast<int>(done * kWidth);
  std::cerr << "\r[" << std::string(static_cast<std::size_t>(filled), '#')
            << std::string(static_cast<std::size_t>(kWidth - filled), ' ') << "] "
            << static_cast<int>(done * 100) << " %" << std::flush;
}

void ProgressBar::clear() {
  if (shown_) std::cerr << "\r\033[K" << std::flush;
  shown_ = false;
}

}  // namespace tobarine
