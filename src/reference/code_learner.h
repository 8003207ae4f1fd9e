// Learns Hamlog's DX codes from a log: which code stands with calls of which DXCC entity.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "callsign/call_analysis.h"
#include "callsign/hamlog_codes.h"

namespace tobarine {

// What became of one code of the log.
struct CodeVerdict {
  enum class Kind {
    kLearned,       // entered into the tables
    kKnown,         // stood in the tables already, with this entity
    kContradicted,  // stands in the tables with another entity; the table's entry stays
    kDoubtful,      // too few contacts, or no clear majority; not entered
    kTableFull,     // l2h_cty.mas has no line left for the entity; h2l_cty.mas has the code
  };
  Kind kind;
  std::string code;
  const Entity* entity;  // of the most calls; nullptr when no call was known
  std::size_t contacts;  // of the code
  std::size_t agreeing;  // of them with calls of that entity
};

class CodeLearner {
 public:
  static constexpr std::size_t kFewestContacts = 2;
  static constexpr std::size_t kClearMajorityPercent = 90;
  static constexpr std::size_t kMostCodes = 5'000;  // no log holds more

  explicit CodeLearner(const CallAnalysis& analysis) : analysis_(analysis) {}

  // One contact of the log; codes below 501 are passed over. `date` is yyyymmdd.
  void add(std::string_view call, std::string_view code, std::string_view date);

  std::size_t codes() const { return votes_.size(); }

  struct Tables {
    std::vector<CodeRow> h2l;
    std::vector<CodeRow> l2h;
    std::vector<CodeVerdict> verdicts;  // in order of codes
  };
  // The tables with what was learned; entries that were there stay as they are.
  Tables learn(const HamlogToDxcc& h2l, const DxccToHamlog& l2h) const;

 private:
  struct Votes {
    std::size_t contacts = 0;
    std::map<std::uint16_t, std::size_t> by_entity;
  };
  CodeVerdict judge(const std::string& code, const Votes& votes) const;

  const CallAnalysis& analysis_;
  std::map<std::string, Votes, std::less<>> votes_;
};

}  // namespace tobarine
