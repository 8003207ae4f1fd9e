#include "app/reference_tools.h"

#include <system_error>

#include "hamlog/hamlog_csv.h"
#include "text/error.h"
#include "text/file_identity.h"
#include "text/folder.h"
#include "text/output_file.h"

namespace tobarine {
namespace {

namespace fs = std::filesystem;

struct VerdictText {
  CodeVerdict::Kind kind;
  std::string_view name;
  std::string_view text;
};

constexpr VerdictText kVerdicts[] = {
    {CodeVerdict::Kind::kLearned, "learned", "登録しました"},
    {CodeVerdict::Kind::kKnown, "known", "登録済みです"},
    {CodeVerdict::Kind::kContradicted, "contradicted",
     "表の登録と違います (表はそのままにしました)"},
    {CodeVerdict::Kind::kDoubtful, "doubtful", "はっきりしないので登録しません"},
    {CodeVerdict::Kind::kTableFull, "table-full",
     "h2l_cty.mas に登録しました (l2h_cty.mas には空きがありません)"},
};

const VerdictText& text_of(CodeVerdict::Kind kind) {
  for (const VerdictText& verdict : kVerdicts) {
    if (verdict.kind == kind) return verdict;
  }
  return kVerdicts[0];
}

// The table in a file; empty when there is none, or none that can be read.
template <typename Table>
Table present_table(const fs::path& path) {
  Table table;
  std::error_code error;
  if (!fs::exists(path, error)) return table;
  try {
    table.load(path);
  } catch (const Error&) {
    return {};
  }
  return table;
}

// What is no such table may be a file of the user's own.
bool is_dxcc_file(const fs::path& file) {
  return present_table<PrefixTable>(file).numbers() > 0;
}

bool is_jcc_master(const fs::path& file) {
  return !present_table<JccMaster>(file).places().empty();
}

KeepRule keeping(const KeepRule& rule, bool (*is_table)(const fs::path&)) {
  return {is_table, rule.now, rule.told};
}

void put_lines(std::string_view what, const std::vector<std::string>& lines, std::string& text) {
  if (lines.empty()) return;
  text.append(what).append(": ").append(std::to_string(lines.size())).append(" 件\n");
  for (const std::string& line : lines) text.append("  ").append(line).append("\n");
}

// Fetched lists wait under names of their own until all are there; the mark says that they are.
constexpr std::string_view kWaiting = ".new";
constexpr std::string_view kAllThere = "jarl-lists.ready";

fs::path waiting(const fs::path& folder, std::string_view file) {
  return folder / (std::string(file) + std::string(kWaiting));
}

// Gives waiting lists their names, also those that a killed download has left.
void take_waiting_lists(const fs::path& folder) {
  std::error_code error;
  const fs::path mark = folder / kAllThere;
  if (!fs::exists(mark, error)) return;
  for (const std::string_view file : kListFiles) {
    const fs::path from = waiting(folder, file);
    if (!fs::exists(from, error)) continue;
    fs::rename(from, file_in(folder, file), error);
    if (error) throw FileError(file_in(folder, file), "書き換えられません: " + error.message());
  }
  fs::remove(mark, error);
}

}  // namespace

DxccRenewal renew_dxcc_file(const fs::path& cty_dat, const fs::path& folder, const fs::path& output,
                            OnLoss on_loss, const KeepRule& rule) {
  const fs::path entity_file = file_in(folder, "dxcc_mas.txt");
  refuse_shared_files({cty_dat, entity_file}, {output});
  EntityList entities;
  entities.load(entity_file);
  DxccRenewal renewal{build_dxcc_file(cty_dat, entities), {}};
  if (on_loss == OnLoss::kRefuse) {
    renewal.refusal = dxcc_loss(present_table<PrefixTable>(output), renewal.built);
  }
  if (renewal.refusal.empty()) {
    replace_text_file(output, renewal.built.text, keeping(rule, is_dxcc_file));
  }
  return renewal;
}

JccRenewal renew_jcc_master(const fs::path& lists_folder, const fs::path& output, OnLoss on_loss,
                            const KeepRule& rule) {
  for (const std::string_view list : kListFiles) {
    refuse_shared_files({file_in(lists_folder, list)}, {output});
  }
  take_waiting_lists(lists_folder);
  JccRenewal renewal{build_jcc(lists_folder), {}, {}};
  const JccMaster before = present_table<JccMaster>(output);
  renewal.changes = compare_jcc(before.places(), renewal.build.places);
  if (on_loss == OnLoss::kRefuse) {
    renewal.refusal = jcc_loss(before.places().size(), renewal.changes, renewal.build);
  }
  if (renewal.refusal.empty()) {
    replace_text_file(output, JccMaster::file_text(renewal.build.places),
                      keeping(rule, is_jcc_master));
  }
  return renewal;
}

CodesLearned learn_codes(const fs::path& log, const CallAnalysis& calls, const fs::path& target) {
  const InputWatch watch(log);
  const HamlogCsvInfo info = check_hamlog_csv(log);
  CodeLearner learner(calls);
  HamlogLineReader reader(log, info.utf8);
  QsoRecord record;
  FindingLog findings;
  while (reader.next(record, findings)) {
    learner.add(record.call, record.code, record.qso_date);
    if (learner.codes() > CodeLearner::kMostCodes) {
      throw FileError(log, "Code の種類が多すぎます。Hamlog の CSV ではないようです");
    }
  }
  watch.check();
  CodesLearned learned{{}, {file_in(target, "h2l_cty.mas"), file_in(target, "l2h_cty.mas")}};
  refuse_shared_files({log}, {learned.files[0], learned.files[1]});
  HamlogToDxcc h2l;
  DxccToHamlog l2h;
  h2l.load(learned.files[0]);
  l2h.load(learned.files[1]);
  CodeLearner::Tables tables = learner.learn(h2l, l2h);
  replace_text_file(learned.files[0], h2l_file_text(tables.h2l));
  replace_text_file(learned.files[1], l2h_file_text(tables.l2h));
  learned.verdicts = std::move(tables.verdicts);
  return learned;
}

std::array<std::string, 3> dates_of_our_lists(const Settings& s) {
  return {s.jcc_list_date, s.jcg_list_date, s.jcg_list_date};
}

bool is_newer_list(const std::string& server_date, const std::string& our_date) {
  // Dates compare as texts; what was fetched before under another form of date counts as old.
  return !server_date.empty() && (server_date > our_date || !our_date.starts_with("2"));
}

void keep_jarl_lists(const JarlLists& fetched, const fs::path& folder, Settings& settings) {
  std::error_code error;
  fs::remove(folder / kAllThere, error);
  for (std::size_t i = 0; i < fetched.lists.size(); ++i) {
    replace_file(waiting(folder, kListFiles[i]), fetched.lists[i]);
  }
  replace_file(folder / kAllThere, {});
  take_waiting_lists(folder);
  settings.jcc_list_date = fetched.dates[0];
  settings.jcg_list_date = fetched.dates[1];
}

std::string dxcc_text(const DxccFile& built) {
  return "エンティティ: " + std::to_string(built.entities) +
         "  プリフィックス: " + std::to_string(built.prefixes) +
         "  コール: " + std::to_string(built.calls) + "\n";
}

std::string jcc_text(const JccRenewal& renewal) {
  std::string text;
  const auto put_count = [&text](std::string_view what, const JccCount& count) {
    text.append(what).append(": 現存 ").append(std::to_string(count.current));
    text.append("  消滅 ").append(std::to_string(count.abolished)).append("\n");
  };
  put_count("市 (東京都の区を含む)", renewal.build.cities);
  put_count("郡", renewal.build.guns);
  put_count("区", renewal.build.wards);
  put_lines("追加", renewal.changes.added, text);
  put_lines("消滅", renewal.changes.abolished, text);
  put_lines("変更", renewal.changes.renamed, text);
  put_lines("削除", renewal.changes.removed, text);
  put_lines("確認して下さい", renewal.build.problems, text);
  return text;
}

std::string learned_text(const CodesLearned& learned) {
  std::string text;
  std::size_t count = 0;
  for (const CodeVerdict& v : learned.verdicts) {
    count += v.kind == CodeVerdict::Kind::kLearned ? 1 : 0;
    text.append(v.code).append("\t");
    text.append(v.entity == nullptr ? "" : v.entity->prefix).append("\t");
    text.append(v.entity == nullptr ? "" : v.entity->name).append("\t");
    text.append(std::to_string(v.agreeing)).append("/").append(std::to_string(v.contacts));
    text.append("\t").append(text_of(v.kind).text).append("\n");
  }
  return text + "登録数: " + std::to_string(count) + " 件\n";
}

std::string list_dates_text(const JarlDates& server, const std::array<std::string, 3>& ours) {
  std::string text;
  for (std::size_t i = 0; i < ours.size(); ++i) {
    const std::string& date = server.dates[i];
    text.append(kListFiles[i]).append(": サーバー ").append(date.empty() ? "日付不明" : date);
    text.append("  取り込み済み ").append(ours[i].empty() ? "なし" : ours[i]);
    text.append(is_newer_list(date, ours[i]) ? "  新しいリストがあります\n" : "\n");
  }
  return text;
}

std::string_view verdict_name(CodeVerdict::Kind kind) {
  return text_of(kind).name;
}

}  // namespace tobarine
