#include "callsign/call_analysis.h"

#include <gtest/gtest.h>

#include "paths.h"
#include "tables.h"
#include "test_folder.h"
#include "text/error.h"
#include "text/strings.h"

namespace tobarine {
namespace {

struct Row {
  const char* call;
  const char* prefix;
};

void expect_prefixes(std::initializer_list<Row> rows) {
  for (const Row& row : rows)
    EXPECT_EQ(delivered<CallTables>().calls.find(row.call).prefix(), row.prefix) << row.call;
}

TEST(CallAnalysis, PlainCalls) {
  expect_prefixes({{"JA1ABC", "JA"},
                   {" ja1abc ", "JA"},
                   {"8N2ABC", "JA"},
                   {"W1AW", "W"},
                   {"KH6XX", "KH6"},
                   {"KL7AA", "KL"},
                   {"AL7X", "KL"},
                   {"JD1ABC", "JD1/O"},
                   {"JD1BMM", "JD1/M"},
                   {"UA9AA", "UA0"},
                   {"UA9FAA", "UA"},
                   {"IT9ABC", "I"},
                   {"TA1AA", "TA"},
                   {"4U1VIC", "OE"},
                   {"GM3ABC", "GM"},
                   {"3D2CR", "3D2/C"}});
}

TEST(CallAnalysis, OnlyTwoLetterCallsAreGuantanamo) {
  expect_prefixes(
      {{"KG4AA", "KG4"}, {"KG4ABC", "W"}, {"KG4A", "W"}, {"KG4", "KG4"}, {"KG4/W1AW", "KG4"}});
}

TEST(CallAnalysis, EndingsThatDoNotMoveACall) {
  expect_prefixes({{"JA1ABC/P", "JA"},
                   {"JA1ABC/PM", "JA"},
                   {"JA1ABC/PM95", "JA"},
                   {"JA1ABC/PM95UP/P", "JA"},
                   {"PY1AA/SD", "PY"},
                   {"DL1ABC/LH", "DL"},
                   {"W1AW/QRPP", "W"},
                   {"JD1BMM/P", "JD1/M"},
                   {"G3ABC/A", "G"},
                   {"PA3ABC/J", "PA"},
                   {"SP1ABC/70", "SP"},
                   {"W1AW/AG", "W"},
                   {"EA8/DK1RI/P", "EA8"},
                   {"UA9QCP/3/P", "UA"},
                   {"F/G4ABC/QRP/P", "F"}});
}

TEST(CallAnalysis, ADigitReplacesTheCallArea) {
  expect_prefixes(
      {{"JA1ABC/6", "JA"},     {"KL7AA/4", "W"},        {"KH6XX/4", "W"},    {"KH6XX/6", "W"},
       {"KL7AA/7", "W"},       {"KL7CN/7", "W"},        {"NH6J/1", "W"},     {"AL7BA/4", "W"},
       {"AL7BA/P/4", "W"},     {"KP4AA/2", "W"},        {"JD1YBK/3", "JA"},  {"JD1BMH/1", "JA"},
       {"JD1BMH/P", "JD1/O"},  {"UA9AA/3", "UA"},       {"UA9FAA/9", "UA"},  {"UA9QCP/P/3", "UA"},
       {"UA3AA/9", "UA0"},     {"UA3AA/2", "UA2"},      {"R15CWC/9", "UA0"}, {"EA/DL1ABC/6", "EA6"},
       {"RA/DL1ABC/0", "UA0"}, {"KH2/JA1ABC/1", "KH2"}, {"EA1ABC/8", "EA8"}, {"EA8ABC/1", "EA"},
       {"OH0AB/2", "OH"},      {"C6AXX/4", "C6"},       {"W6RJ/4", "W"},     {"VK9XX/6", "VK"}});
}

TEST(CallAnalysis, TheShorterKnownSideIsThePlace) {
  expect_prefixes({{"KH6/W1AW", "KH6"},   {"W1AW/KH6", "KH6"},    {"P5/4Q4QQ", "P5"},
                   {"AA7V/VP2V", "VP2V"}, {"3D2R/W1AW", "3D2/R"}, {"JD1/JA6GXK", "JD1/M"},
                   {"HB0/DK3RED", "HB0"}, {"W1AW/VE3", "VE"},     {"DL1ABC/IMD", "DL"},
                   {"MM/W1AW", "GM"},     {"IK/DL7JOM", "I"},     {"N1RO/C6A", "C6"},
                   {"N8PPQ/LT", "W"},     {"QRP/JA1ABC", "JA"},   {"W1AW/Y2K", "W"},
                   {"TU/G3SXW", "TU"},    {"TN/JA1ABC/P", "TN"},  {"JA1ABC/TN", "TN"},
                   {"VO/DL5XX", "VE"},    {"KG/JA1ABC", "W"},     {"K1Y/KL7", "KL"},
                   {"KL7/K1Y", "KL"},     {"N1A/VP2V", "VP2V"}});
}

TEST(CallAnalysis, AStateBehindAnAmericanCallIsNoCountry) {
  expect_prefixes({{"W4ABC/TN", "W"},
                   {"W6ABC/CA", "W"},
                   {"KL7QW/M/MN", "W"},
                   {"KH6XX/MN", "W"},
                   {"W1AW/M/PA", "W"},
                   {"W1AW/PA", "PA"},
                   {"W1AW/OH", "OH"},
                   {"JA1ABC/CA", "CE"}});
}

TEST(CallAnalysis, GuestsOfAChineseClubAreInChina) {
  expect_prefixes({{"JE2LPC/BY4SA", "BY"},
                   {"DL3NM/BY7KG", "BY"},
                   {"BY1PK/I1ZB", "BY"},
                   {"C6A/BY1PK", "C6"},
                   {"JE1LET/VK3SS", "JA"}});
}

TEST(CallAnalysis, AtSeaAndInTheAirIsNoEntity) {
  expect_prefixes({{"JA1ABC/MM", ""},
                   {"JA1ABC/AM", ""},
                   {"R1ANF/MM", ""},
                   {"UA3EDQ/0/MM/QRP", ""},
                   {"MM/JA1ABC", "GM"},
                   {"AM/JA1ABC", "EA"},
                   {"EA8/MM0TJR/P", "EA8"}});
}

TEST(CallAnalysis, WhatIsNoCallHasNoEntity) {
  for (const char* call : {"", " ", "/", "//", "/P", "XX", "0", "QQ1ABC", "ＪＡ１", "1/2/3/4"}) {
    EXPECT_EQ(delivered<CallTables>().calls.find(call).entity, nullptr) << call;
  }
}

TEST(CallAnalysis, WhatIsLongerThanAnyCallIsNone) {
  const CallAnalysis& calls = delivered<CallTables>().calls;
  const std::string longest =
      "JA1ABC/P" +
      std::string(CallAnalysis::kLongestCall - std::string_view("JA1ABC/P").size(), '/');
  EXPECT_EQ(calls.find("  " + longest + " ").prefix(), "JA");
  EXPECT_EQ(calls.find(longest + "/").entity, nullptr);
  EXPECT_EQ(calls.find("JA1ABC" + std::string(1'000'000, '/')).entity, nullptr);
}

TEST(CallAnalysis, ZonesOfTheCallItself) {
  const CallPlace w7 = delivered<CallTables>().calls.find("KH6XX/7");
  EXPECT_EQ(w7.cq_zone, 3);
  EXPECT_EQ(w7.itu_zone, 6);
  EXPECT_EQ(w7.continent, "NA");
  EXPECT_EQ(w7.qth(), "United States");
  EXPECT_EQ(w7.entity->number, 291);
}

TEST(CallAnalysis, OverridesWinInTheirPeriod) {
  const TestFolder folder;
  for (const char* name : {"dxcc_mas.txt", "dxcc_hl.dat"}) {
    std::filesystem::copy(std::filesystem::path(delivered_folder()) / name, folder / name);
  }
  folder.text("dx_mastL.txt", "# コール\r\nja1abc 291\r\nDL7XX 229 19730917 19901002 # DDR\r\n");
  folder.text("dx_mastS.txt", "Y2 229 - 19901002\r\nW7 6\r\n");
  CallAnalysis analysis;
  analysis.load(folder.path());
  EXPECT_EQ(analysis.find("JA1ABC").prefix(), "W");
  EXPECT_EQ(analysis.find("JA1ABC/P").prefix(), "W");
  EXPECT_EQ(analysis.find("DL7XX", "19901002").prefix(), "Y2");
  EXPECT_EQ(analysis.find("DL7XX", "19901003").prefix(), "DL");
  EXPECT_EQ(analysis.find("DL7XX").prefix(), "DL");
  EXPECT_EQ(analysis.find("Y21AA", "19800101").prefix(), "Y2");
  EXPECT_EQ(analysis.find("Y21AA", "20000101").prefix(), "DL");
  EXPECT_EQ(analysis.find("W7AA").prefix(), "KL");
  folder.text("dx_mastS.txt", "Y2 229\r\nW7 1000\r\n");
  EXPECT_THROW(analysis.load(folder.path()), RecordError);
  folder.text("dx_mastS.txt", "W7 6 1990\r\n");
  EXPECT_THROW(analysis.load(folder.path()), RecordError);
}

TEST(CallAnalysis, DamagedTablesAreRefusedWithTheirLine) {
  const TestFolder folder;
  const auto message = [&folder](const char* entities, const char* prefixes) {
    folder.text("dxcc_mas.txt", entities);
    folder.text("dxcc_hl.dat", prefixes);
    CallAnalysis analysis;
    try {
      analysis.load(folder.path());
    } catch (const Error& error) {
      return std::string(error.what());
    }
    return std::string("-");
  };
  const char* const japan = "339 JA       AS 25 45   JA           Japan\r\n";
  const char* const entry = "JA                   339 25 45 AS\r\n";
  EXPECT_EQ(message(japan, entry), "-");
  EXPECT_TRUE(contains(message("39\r\n", entry), "dxcc_mas.txt: 1 行目"));
  EXPECT_TRUE(contains(message("339 JA          25 45   JA           Japan\r\n", entry), "1 行目"));
  EXPECT_TRUE(contains(message((std::string(japan) + japan).c_str(), entry), "2 行目"));
  EXPECT_TRUE(contains(message(japan, (std::string(entry) + "JA 339\r\n").c_str()), "2 行目"));
  EXPECT_TRUE(contains(message(japan, (std::string(entry) + "A" + (entry + 1)).c_str()), "2 行目"));
  EXPECT_NE(message(japan, ""), "-");
}

}  // namespace
}  // namespace tobarine
