#include <gtest/gtest.h>
#include <map>
#include <utility>

#include "hamlog/hamlog_csv.h"
#include "paths.h"
#include "reference/code_learner.h"
#include "reference/dxcc_builder.h"
#include "reference/jarl_lists.h"
#include "reference/jcc_builder.h"
#include "test_folder.h"
#include "text/error.h"
#include "text/strings.h"

namespace tobarine {
namespace {

class DxccBuilder : public ::testing::Test {
 protected:
  DxccBuilder() { entities_.load(std::filesystem::path(delivered_folder()) / "dxcc_mas.txt"); }

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

TEST_F(DxccBuilder, TellsWhenMuchWouldBeLost) {
  PrefixTable before;
  before.load(folder_.text("dxcc_hl.dat", build(kItaly).text));
  EXPECT_EQ(dxcc_loss(before, build(kItaly)), "");
  const std::string smaller = kItaly;
  EXPECT_TRUE(
      contains(dxcc_loss(before, build(smaller.substr(0, smaller.find("Sicily")))), "4 → 3"));
  const std::string spain = "Spain: 14: 37: EU: 1: 2: 3: EA:\r\n EA;\r\n";
  before.load(folder_.text("dxcc_hl.dat", build(kItaly + spain).text));
  EXPECT_TRUE(contains(dxcc_loss(before, build(kItaly)), "2 → 1"));
  EXPECT_EQ(dxcc_loss(PrefixTable(), build(kItaly)), "");
}

TEST_F(DxccBuilder, FilesBeyondAnyMeasureAreRefused) {
  std::string calls = "Italy: 15: 28: EU: 1: 2: 3: I:\r\n I";
  for (std::size_t i = 0; i < kMostDxccEntries; ++i) {
    calls += (i % 1000 == 0 ? ",\r\n=I" : ",=I") + std::to_string(i);
  }
  EXPECT_TRUE(contains(refusal(calls + ";\r\n"), "多すぎます"));
  EXPECT_TRUE(
      contains(refusal("Italy: 15: 28: EU: 1: 2: 3: I:\r\n I," + std::string(2'000'000, 'I')),
               "2 行目: 行が長すぎます"));
  EXPECT_LT(refusal("Italy: 15: 28: EU: 1: 2: 3: I:\r\n " + std::string(100'000, 'I') + ";").size(),
            500U);
}

TEST(JccBuilder, ReadsTheListsInTheirShapes) {
  const TestFolder folder;
  folder.text(
      "jcc-list.txt",
      "ＪＣＣリスト 2019.5.1現在\r\n  No.  市名\r\n北海道 01\r\n  0101  Sapporo  札幌\r\n"
      "* 0132  Kameda  亀田  \"Nov. 30,1973\"\r\n東 京  10\r\n  100101 Chiyoda  千代田\r\n"
      "* 1001  Tokyo 23-wards  東京23区  \"Mar.31,2010\"\r\n* 1017 Hoya 保谷 　 \"Jan,9,2006\r\n"
      "京 都  26\r\n  2201  Kyoto  京都\r\n  2601  Ayabe 綾部\r\n  26xx  ?\r\n  2603 Noname\r\n");
  folder.text("jcg-list.txt",
              "北海道  01\r\n  01006  Abuta(Iburi)  虻田（胆振)\r\n          Toyouracho 豊浦町\r\n"
              "* 09013  (Reserved)  (欠番）\r\n東京 10\r\n 10007 Ogasawara-Shicho 小笠原支庁\r\n"
              "　　　　　Chichijima　父島\r\n* 10001 Kitatama 北多摩 \"sometime\"\r\n");
  folder.text("ku-list.txt",
              "2024年1月1日に\r\nNo.\t区名\r\n札幌市(0101)\r\n010101\tChuo\t中央\r\n"
              "札幌市（0101）\r\n010102※Kita 北 1989(平成元)年2月12日以前\r\n");
  const JccBuild built = build_jcc(folder.path());
  std::string text;
  for (const JccPlace& place : built.places) {
    text += place.number + " " + place.abolished + " " + place.name + "\n";
  }
  EXPECT_EQ(text,
            "01006  北海道虻田郡\n0101  北海道札幌市\n010101  北海道札幌市中央区\n"
            "010102 1989/02/12 北海道札幌市北区\n0132 1973/11/30 北海道亀田市\n"
            "10001 * 東京都北多摩郡\n10007  東京都小笠原支庁\n1001 2010/03/31 東京都23区\n"
            "100101  東京都千代田区\n1017 2006/01/09 東京都保谷市\n2601  京都府綾部市\n");
  EXPECT_EQ(built.cities.current, 3U);
  EXPECT_EQ(built.cities.abolished, 3U);
  EXPECT_EQ(built.problems.size(), 5U);
}

TEST(JccBuilder, TheDeliveredMasterHoldsEveryNumberOfTheLists) {
  JccMaster master;
  master.load(std::filesystem::path(delivered_folder()) / "JCC_JCG.mas");
  std::map<std::size_t, std::pair<int, int>> counts;  // by digits: existing, abolished
  for (const JccPlace& place : master.places()) {
    auto& count =
        counts[place.number.starts_with("1001") && place.number.size() == 6 ? 4
                                                                            : place.number.size()];
    ++(place.abolished.empty() ? count.first : count.second);
  }
  EXPECT_EQ(counts[4], std::pair(815, 99));  // as the lists themselves say
  EXPECT_EQ(counts[5], std::pair(379, 243));
  EXPECT_EQ(counts[6], std::pair(171, 13));
  EXPECT_EQ(master.find(" 110101 ")->name, "神奈川県横浜市鶴見区");
  EXPECT_EQ(master.find("2603")->prefecture, "和歌山県");
  EXPECT_EQ(master.find("9999"), nullptr);
}

TEST(JccBuilder, TellsWhatChanges) {
  const JccChanges changes = compare_jcc(
      {{"0101", "", "北海道", "A"}, {"0102", "", "北海道", "B"}, {"0103", "", "", "C"}},
      {{"0101", "", "北海道", "A2"}, {"0102", "2020/01/01", "", "B"}, {"0104", "", "", "D"}});
  EXPECT_EQ(changes.added, std::vector<std::string>{"0104 D"});
  EXPECT_EQ(changes.abolished, std::vector<std::string>{"0102 B 2020/01/01"});
  EXPECT_EQ(changes.renamed, std::vector<std::string>{"0101 A2 (A)"});
  EXPECT_EQ(changes.removed, std::vector<std::string>{"0103 C"});
}

TEST(JccBuilder, TellsWhenMuchWouldBeLost) {
  JccBuild build;
  JccChanges changes;
  changes.removed.resize(10);
  EXPECT_EQ(jcc_loss(100, changes, build), "");
  EXPECT_TRUE(contains(jcc_loss(99, changes, build), "99 件の内 10 件"));
  build.miscounts = {"a", "b"};
  EXPECT_TRUE(contains(jcc_loss(100, changes, build), "揃っていません (a、b)"));
}

TEST(JccBuilder, ListsBeyondAnyMeasureAreRefused) {
  const std::array<std::string, 3> lists = {"a 01\r\n0101 A \x88\xA0\r\n",
                                            "a 01\r\n01001 A \x88\xA0\r\n",
                                            "\x88\xA0\x8E\x73(0101)\r\n010101 A \x88\xA0\r\n"};
  std::array<std::string, 3> wide = lists;
  for (int i = 0; i < 5000; ++i) wide[1] += "?1\r\n";
  EXPECT_LT(build_jcc(wide).problems.size(), 200U);
  wide = lists;
  for (std::size_t i = 0; i <= kMostPlaces; ++i) wide[0] += "0101 A \x88\xA0\r\n";
  EXPECT_THROW(build_jcc(wide), FileError);
  wide = lists;
  wide[0].append(kLargestList, '\t');
  for (std::size_t i = 0; i < kLargestList / 2; ++i) wide[1] += "\x81\x40";
  EXPECT_EQ(build_jcc(wide).problems.size(), 2U);
  const TestFolder folder;
  folder.text("jcc-list.txt", std::string(kLargestList + 1, ' '));
  EXPECT_THROW(build_jcc(folder.path()), FileError);
}

TEST(JarlLists, OnlyARefusedConnectionLeadsToPlainHttp) {
  for (const auto kind :
       {HttpError::Kind::kRefused, HttpError::Kind::kAnswered, HttpError::Kind::kOther}) {
    std::string asked;
    const HttpAsk ask = [&](const std::string& url, const HttpLimits&) -> HttpAnswer {
      asked += url + " ";
      if (url.starts_with("https")) throw HttpError(kind, url, "");
      return {"list", ""};
    };
    bool plain = false;
    if (kind == HttpError::Kind::kRefused) {
      EXPECT_EQ(ask_securely("https://a/b", {}, ask, plain).body, "list");
      ask_securely("https://a/c", {}, ask, plain);
      EXPECT_TRUE(plain);
      EXPECT_EQ(asked, "https://a/b http://a/b http://a/c ");
    } else {
      EXPECT_THROW(ask_securely("https://a/b", {}, ask, plain), HttpError);
      EXPECT_EQ(asked, "https://a/b ");
    }
  }
}

TEST(JccBuilder, RefusesWhatIsNoList) {
  const TestFolder folder;
  EXPECT_THROW(build_jcc(folder.path()), FileError);
  folder.text("jcc-list.txt", "<html><body>404</body></html>");
  EXPECT_THROW(build_jcc(folder.path()), FileError);
}

TEST(CodeLearner, TakesClearMajoritiesAndKeepsHandMadeEntries) {
  CallAnalysis calls;
  calls.load(delivered_folder());
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
