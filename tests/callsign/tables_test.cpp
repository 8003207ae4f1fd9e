#include <gtest/gtest.h>
#include <set>

#include "callsign/entities.h"
#include "callsign/hamlog_codes.h"
#include "callsign/jcc_master.h"
#include "callsign/us_states.h"
#include "paths.h"
#include "test_folder.h"
#include "text/error.h"
#include "text/strings.h"
#include "text/utf8.h"

namespace tobarine {
namespace {

const std::filesystem::path kData = delivered_folder();

TEST(DeliveredTables, HoldAllEntities) {
  EntityList entities;
  entities.load(kData / "dxcc_mas.txt");
  std::size_t current = 0;
  for (const Entity& entity : entities.all()) current += entity.deleted ? 0 : 1;
  EXPECT_EQ(current, 340U);
  EXPECT_EQ(entities.all().size() - current, 62U);
  DxccToHamlog l2h;
  l2h.load(kData / "l2h_cty.mas");
  HamlogToDxcc h2l;
  h2l.load(kData / "h2l_cty.mas");
  ASSERT_EQ(l2h.rows().size(), DxccToHamlog::kRows);
  std::set<unsigned> numbers;
  for (std::size_t i = 0; i < l2h.rows().size(); ++i) {
    const CodeRow& row = l2h.rows()[i];
    const Entity* entity = entities.by_number(row.dxcc);
    ASSERT_NE(entity, nullptr) << i;
    EXPECT_EQ(entity->deleted, i >= current);
    EXPECT_EQ(row.text, entity->name);
    EXPECT_EQ(row.code, row.dxcc == 339 ? "500A" : "");
    EXPECT_EQ(h2l.rows()[i].dxcc, row.dxcc);
    numbers.insert(row.dxcc);
  }
  EXPECT_EQ(numbers.size(), l2h.rows().size());
  EXPECT_EQ(l2h.find(339)->text, "Japan");
}

TEST(Tables, ADamagedLineIsNamed) {
  const TestFolder folder;
  const auto refusal = [&folder](auto table, const std::string& text) {
    try {
      table.load(folder.text("t.mas", text));
    } catch (const RecordError& error) {
      return std::string(error.what());
    }
    return std::string();
  };
  const std::string japan = "339 JA       AS 25 45   JA           Japan\n";
  EXPECT_EQ(refusal(EntityList(), japan), "");
  EXPECT_TRUE(contains(refusal(EntityList(), japan + "291 W           05 08   K            USA\n"),
                       "2 行目: DXCC エンティティの行として読めません (DXCC 番号"));
  for (const std::string& said :
       {refusal(JccMaster(), "0101\t\t北海道\t札\r幌市\r\n"),
        refusal(EntityList(), japan + "\rx\n"),
        refusal(DxccToHamlog(), "291 W             502A  United\rStates\r\n")}) {
    EXPECT_TRUE(contains(said, "CR だけ")) << said;
  }
}

TEST(HamlogCodes, FindsACodeWhateverItsCaseAndBlanks) {
  HamlogToDxcc codes;
  codes.load(kData / "h2l_cty.mas");
  EXPECT_EQ(codes.find("500A"), "339");
  EXPECT_EQ(codes.find(" 500a "), "339");
  EXPECT_EQ(codes.find("501A"), "0");
  EXPECT_EQ(codes.find(""), "0");
}

TEST(HamlogCodes, FilesKeepTheirColumns) {
  const std::vector<CodeRow> rows = {{"501A", 6, "KL", "Alaska"}, {"", 0, "", "手書きの行です"}};
  EXPECT_EQ(l2h_file_text(rows),
            "006 KL            501A  Alaska\n" + std::string(24, ' ') + "手書きの行です\n");
  const TestFolder folder;
  HamlogToDxcc h2l;
  h2l.load(folder.text("h2l", h2l_file_text(rows)));
  ASSERT_EQ(h2l.rows().size(), 2U);
  EXPECT_EQ(h2l.rows()[1].text, "手書きの行です");
  EXPECT_EQ(h2l.find("501A"), "6");
  EXPECT_THROW(h2l.load(folder.text("bad", "501A  xx  KL")), RecordError);
}

TEST(HamlogCodes, TheTableTakesNoMoreThanItsLines) {
  const TestFolder folder;
  std::string text;
  for (std::size_t i = 0; i < DxccToHamlog::kRows; ++i) text += "001\r\n";
  DxccToHamlog table;
  table.load(folder.text("a", text));
  EXPECT_EQ(table.rows().size(), DxccToHamlog::kRows);
  EXPECT_THROW(table.load(folder.text("b", text + "002")), RecordError);
}

TEST(DxccNumber, ComparesWithoutZerosAndBlanks) {
  EXPECT_EQ(dxcc_number("006"), 6U);
  EXPECT_EQ(dxcc_number(" 6 "), 6U);
  for (const char* text : {"", "x", "6x", "1000", "-1"}) EXPECT_EQ(dxcc_number(text), 0U) << text;
}

TEST(UsStates, BelongToTheirPrefixes) {
  EXPECT_TRUE(is_state_of("W", "CA"));
  EXPECT_TRUE(is_state_of("W", "NV"));
  EXPECT_TRUE(is_state_of("KH6", "HI"));
  EXPECT_TRUE(is_state_of("KL", "AK"));
  EXPECT_FALSE(is_state_of("W", "HI"));
  EXPECT_FALSE(is_state_of("W", "AK"));
  EXPECT_FALSE(is_state_of("W", "C"));
  EXPECT_FALSE(is_state_of("KH6", "CA"));
  EXPECT_FALSE(is_state_of("JA", "CA"));
}

}  // namespace
}  // namespace tobarine
