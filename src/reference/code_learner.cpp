#include "reference/code_learner.h"

#include <algorithm>

#include "text/strings.h"
#include "text/utf8.h"

namespace tobarine {
namespace {

constexpr double kFirstDxCode = 501;

bool is_dx_code(std::string_view code) {
  return code.size() <= 5 && leading_number(left_chars(code, 3)) >= kFirstDxCode;
}

// Fills the blank line of the entity, or adds a line for one more code of it.
void enter_h2l(std::vector<CodeRow>& rows, const CodeVerdict& learned) {
  const auto blank = std::ranges::find_if(rows, [&learned](const CodeRow& row) {
    return row.code.empty() && row.dxcc == learned.entity->number;
  });
  if (blank != rows.end()) {
    blank->code = learned.code;
  } else {
    rows.push_back(
        {learned.code, learned.entity->number, learned.entity->prefix, learned.entity->name});
  }
}

// False when the table is full.
bool enter_l2h(std::vector<CodeRow>& rows, const CodeVerdict& learned) {
  const auto line = std::ranges::find_if(
      rows, [&learned](const CodeRow& row) { return row.dxcc == learned.entity->number; });
  if (line == rows.end()) {
    if (rows.size() == DxccToHamlog::kRows) return false;
    rows.push_back(
        {learned.code, learned.entity->number, learned.entity->prefix, learned.entity->name});
  } else if (line->code.empty()) {
    line->code = learned.code;
  }
  return true;
}

}  // namespace

void CodeLearner::add(std::string_view call, std::string_view code, std::string_view date) {
  const std::string key = upper(trim(code));
  if (!is_dx_code(key)) return;
  Votes& votes = votes_[key];
  ++votes.contacts;
  const CallPlace place = analysis_.find(call, date);
  if (place.entity != nullptr) ++votes.by_entity[place.entity->number];
}

CodeVerdict CodeLearner::judge(const std::string& code, const Votes& votes) const {
  CodeVerdict verdict{CodeVerdict::Kind::kDoubtful, code, nullptr, votes.contacts, 0};
  for (const auto& [number, count] : votes.by_entity) {
    if (count <= verdict.agreeing) continue;
    verdict.agreeing = count;
    verdict.entity = analysis_.entities().by_number(number);
  }
  const bool clear = verdict.agreeing * 100 >= kClearMajorityPercent * votes.contacts;
  if (verdict.entity != nullptr && clear && votes.contacts >= kFewestContacts) {
    verdict.kind = CodeVerdict::Kind::kLearned;
  }
  return verdict;
}

CodeLearner::Tables CodeLearner::learn(const HamlogToDxcc& h2l, const DxccToHamlog& l2h) const {
  Tables tables{h2l.rows(), l2h.rows(), {}};
  for (const auto& [code, votes] : votes_) {
    CodeVerdict verdict = judge(code, votes);
    const std::string_view known = h2l.find(code);
    if (known != "0" && verdict.kind == CodeVerdict::Kind::kLearned) {
      verdict.kind = known == dxcc_text(*verdict.entity) ? CodeVerdict::Kind::kKnown
                                                         : CodeVerdict::Kind::kContradicted;
    }
    tables.verdicts.push_back(std::move(verdict));
  }
  // An entity's main code ends with "A"; where a log has several codes, that one goes into
  // l2h_cty.mas, else the one with the most contacts.
  std::vector<CodeVerdict*> in_order;
  for (CodeVerdict& verdict : tables.verdicts) in_order.push_back(&verdict);
  std::ranges::stable_sort(in_order, [](const CodeVerdict* a, const CodeVerdict* b) {
    const bool a_main = a->code.back() == 'A';
    const bool b_main = b->code.back() == 'A';
    return a_main != b_main ? a_main : a->contacts > b->contacts;
  });
  for (CodeVerdict* verdict : in_order) {
    const bool known = verdict->kind == CodeVerdict::Kind::kKnown;
    if (!known && verdict->kind != CodeVerdict::Kind::kLearned) continue;
    if (!known) enter_h2l(tables.h2l, *verdict);
    if (!enter_l2h(tables.l2h, *verdict)) verdict->kind = CodeVerdict::Kind::kTableFull;
  }
  return tables;
}

}  // namespace tobarine
