// The tools that renew the reference files of the program folder, for the command line and the
// window alike, and what they tell the user.
#pragma once

#include <array>
#include <filesystem>
#include <string>
#include <vector>

#include "app/settings.h"
#include "reference/code_learner.h"
#include "reference/dxcc_builder.h"
#include "reference/jarl_lists.h"
#include "reference/jcc_builder.h"
#include "text/keep_rule.h"

namespace tobarine {

// What is done with a new reference file that has lost more than a tenth of the present one, or is
// made of lists that are not complete.
enum class OnLoss { kRefuse, kReplace };

// `folder` holds the reference files to read, `output` is the file to replace; what stands there
// and is no such table is renamed, and the rule's clock and voice (its `may_go` is not asked) are
// used for it. All throw FileError, RecordError and UsageError; nothing is replaced then.
struct DxccRenewal {
  DxccFile built;
  std::string refusal;  // not empty: why nothing was replaced
};
DxccRenewal renew_dxcc_file(const std::filesystem::path& cty_dat,
                            const std::filesystem::path& folder,
                            const std::filesystem::path& output, OnLoss on_loss,
                            const KeepRule& rule);

struct JccRenewal {
  JccBuild build;
  JccChanges changes;
  std::string refusal;  // not empty: why nothing was replaced
};
JccRenewal renew_jcc_master(const std::filesystem::path& lists_folder,
                            const std::filesystem::path& output, OnLoss on_loss,
                            const KeepRule& rule);

// Learns the codes of a Hamlog CSV into both tables of `target`. The verdicts point into `calls`.
struct CodesLearned {
  std::vector<CodeVerdict> verdicts;
  std::array<std::filesystem::path, 2> files;
};
CodesLearned learn_codes(const std::filesystem::path& log, const CallAnalysis& calls,
                         const std::filesystem::path& target);

// The dates of the lists that were fetched last, in the order of kListFiles. The wards have none of
// their own in the settings; they are fetched with the guns.
std::array<std::string, 3> dates_of_our_lists(const Settings& settings);
bool is_newer_list(const std::string& server_date, const std::string& our_date);

// Puts the fetched lists into the folder and their dates into the settings, which are not saved.
// When it is ended in the middle, the next command that uses the lists brings all three to the same
// age.
void keep_jarl_lists(const JarlLists& fetched, const std::filesystem::path& folder,
                     Settings& settings);

// Lines for people, each ended by LF.
std::string dxcc_text(const DxccFile& built);
std::string jcc_text(const JccRenewal& renewal);
std::string learned_text(const CodesLearned& learned);
std::string list_dates_text(const JarlDates& server, const std::array<std::string, 3>& ours);

inline constexpr std::string_view kPlainHttpNote =
    "https で繋がらないので http で調べました。途中で書き換えられていないかは確かめられません";

// What became of a code: for machines, and for people.
std::string_view verdict_name(CodeVerdict::Kind kind);

}  // namespace tobarine
