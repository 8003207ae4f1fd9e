#include "rules/findings.h"

#include <gtest/gtest.h>
#include <set>
#include <string>

#include "text/strings.h"

namespace tobarine {
namespace {

// The window shows the same headings as the command line.
TEST(Findings, HeadingsSpeakNoCommandLine) {
  std::set<std::string_view> names;
  for (int k = 0; k < static_cast<int>(FindingKind::kCount); ++k) {
    const auto kind = static_cast<FindingKind>(k);
    const std::string_view heading = finding_heading(kind);
    EXPECT_TRUE(names.insert(finding_name(kind)).second) << finding_name(kind);
    EXPECT_FALSE(heading.empty()) << finding_name(kind);
    for (const char* word : {"tobarine-cli", "--", "Op_", "Chk_", "build "}) {
      EXPECT_FALSE(contains(heading, word)) << heading;
    }
  }
}

TEST(FindingLog, KeepsCleanTextsAndCountsTheRest) {
  FindingLog log;
  const std::string call = "JA1\x1B[2J\r\nABC";
  for (std::size_t i = 0; i <= FindingLog::kKept; ++i) {
    log.add(FindingKind::kUnknownMode, i, call, std::string(FindingLog::kLongestText + 1, 'x'));
  }
  EXPECT_EQ(log.count(FindingKind::kUnknownMode), FindingLog::kKept + 1);
  ASSERT_EQ(log.kept().size(), FindingLog::kKept);
  EXPECT_EQ(log.kept()[0].call, "JA1␛[2J␍␊ABC");
  EXPECT_EQ(log.kept()[0].text, std::string(FindingLog::kLongestText, 'x') + "…");
  EXPECT_EQ(log.about_contacts(), FindingLog::kKept);  // all but the one of line 0
}

}  // namespace
}  // namespace tobarine
