#include <gtest/gtest.h>

#include "hamlog/hamlog_csv.h"
#include "reference/code_learner.h"
#include "reference/dxcc_builder.h"
#include "test_folder.h"
#include "text/error.h"
#include "text/strings.h"

namespace tobarine {
namespace {

class DxccBuilder : public ::testing::Test {
 protected:
  DxccBuilder() { entities_.load(std::filesystem::path(TOBARINE_DATA) / "dxcc_mas.txt"); }

  DxccFile build(const std::string& text) {
    return build_dxcc_file(folder_.text("cty.dat", text), entities_);
  }

  std::string refusal(const std::string& text) {
    try {
      build(text);
    } catch (const Error& error) {
      return error.what();
    }
    return "-";
  }

  TestFolder folder_;
  EntityList entities_;
};

const char* const kItaly =
    "Italy:                    15:  28:  EU:   42.82:   -12.58:    -1.0:  I:\r\n"
    "    I,=IK0XX/2(14)[27],=VER20240101,\r\n    IK<1.0/2.0>{AF}~-1.0~;\r\n"
    "Sicily:                   15:  28:  EU:   37.50:   -14.00:    -1.0:  *IT9:\r\n"
    "    IT9;\r\n";

TEST_F(DxccBuilder, SortsEntriesAndFoldsAreasIntoTheirEntity) {
  const DxccFile built = build(kItaly);
  EXPECT_EQ(built.version, "VER20240101");
  EXPECT_EQ(built.entities, 2U);
  EXPECT_EQ(built.prefixes, 3U);
  EXPECT_EQ(built.calls, 1U);
  const std::string entries = built.text.substr(built.text.rfind("#"));
  EXPECT_EQ(entries.substr(entries.find('\n') + 1),
            "=IK0XX/2             248 14 27 EU\n"
            "I                    248 15 28 EU\n"
            "IK                   248 15 28 AF\n"
            "IT9                  248 15 28 EU\n");
  PrefixTable table;
  table.load(folder_.text("dxcc_hl.dat", built.text));
  EXPECT_EQ(table.full_call("IK0XX/2")->cq_zone, 14);
  EXPECT_EQ(table.longest_prefix("IT9AA")->length, 3U);
  EXPECT_EQ(table.longest_prefix("K1AA"), std::nullopt);
}

TEST_F(DxccBuilder, DamagedFilesAreRefusedWithLineAndReason) {
  const std::string italy = kItaly;
  const struct {
    std::string text;
    const char* message;
  } rows[] = {
      {italy.substr(0, italy.size() - 3), "5 行目"},  // cut before the last semicolon
      {italy.substr(0, 60), "1 行目"},                // cut in the first line
      {italy.substr(0, 74), "途中で切れています"},    // cut behind the first line
      {"Italy: 15: 28: EU: 1: 2: 3: QQ:\r\n QQ;\r\n", "dxcc_mas.txt に無い"},
      {"Italy: 41: 28: EU: 1: 2: 3: I:\r\n I;\r\n", "CQ ゾーン"},
      {"Italy: 15: 28: XX: 1: 2: 3: I:\r\n I;\r\n", "大陸"},
      {"Italy: 15: 28: EU: 1: 2: 3: I:\r\n I,,IK;\r\n", "2 行目"},
      {"Italy: 15: 28: EU: 1: 2: 3: I:\r\n I(15;\r\n", "括弧"},
      {"Italy: 15: 28: EU: 1: 2: 3: I:\r\n I k;\r\n", "2 行目"},
      {"Italy: 15: 28: EU: 1: 2: 3: I:\r\n I\r\n", "2 行目"},
      {italy + "Spain: 14: 37: EU: 1: 2: 3: EA:\r\n IK;\r\n", "二つのエンティティ"},
      {"", "中身がありません"},
      {"<html>\r\n", "1 行目"},
  };
  for (const auto& row : rows) {
    EXPECT_TRUE(contains(refusal(row.text), row.message)) << refusal(row.text) << "\n" << row.text;
  }
}

TEST(CodeLearner, TakesClearMajoritiesAndKeepsHandMadeEntries) {
  CallAnalysis calls;
  calls.load(TOBARINE_DATA);
  const TestFolder folder;
  HamlogToDxcc h2l;
  DxccToHamlog l2h;
  h2l.load(folder.text("h2l",
                       "500A  339 JA            Japan\r\n      291 W             U.S.A.\r\n"
                       "777A  230 DL            Germany\r\n"));
  l2h.load(
      folder.text("l2h", "339 JA            500A  Japan\r\n291 W                   U.S.A.\r\n"));
  CodeLearner learner(calls);
  const auto add = [&learner](const char* call, const char* code, int times) {
    for (int i = 0; i < times; ++i) learner.add(call, code, "20200101");
  };
  add("W1AW", "502b", 20);  // the main code of an entity ends with A
  add("K1AA", "502A ", 9);
  add("VE3AA", "502A", 1);  // 90 %: clear
  add("VE3AA", "503A", 8);
  add("W1AW", "503A", 1);   // 89 %: doubtful
  add("HL1AA", "504A", 1);  // once: doubtful
  add("F1AA", "777A", 3);   // contradicts a hand-made entry
  add("JA1AA", "500A", 9);  // no DX code
  add("QQ1AA", "505A", 3);  // nobody knows the calls
  const CodeLearner::Tables tables = learner.learn(h2l, l2h);
  std::string verdicts;
  for (const CodeVerdict& v : tables.verdicts) {
    verdicts += v.code + "=" + std::to_string(static_cast<int>(v.kind)) + " ";
  }
  EXPECT_EQ(verdicts, "502A=0 502B=0 503A=3 504A=3 505A=3 777A=2 ");
  EXPECT_EQ(h2l_file_text(tables.h2l),
            "500A  339 JA            Japan\n502A  291 W             U.S.A.\n"
            "777A  230 DL            Germany\n502B  291 W             United States\n");
  EXPECT_EQ(l2h_file_text(tables.l2h),
            "339 JA            500A  Japan\n291 W             502A  U.S.A.\n");
}

}  // namespace
}  // namespace tobarine
