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
                   {"JA1ABC/MM", "JA"},
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
  expect_prefixes({{"JA1ABC/6", "JA"},
                   {"KL7AA/4", "W"},
                   {"KH6XX/4", "W"},
                   {"KH6XX/6", "KH6"},
                   {"KP4AA/2", "W"},
                   {"JD1YBK/3", "JA"},
                   {"UA9AA/3", "UA"},
                   {"UA3AA/9", "UA0"},
                   {"EA1ABC/8", "EA8"},
                   {"EA8ABC/1", "EA"},
                   {"OH0AB/2", "OH"},
                   {"C6AXX/4", "C6"},
                   {"W6RJ/4", "W"},
                   {"VK9XX/6", "VK"}});
}

TEST(CallAnalysis, TheShorterKnownSideIsThePlace) {
  expect_prefixes({{"KH6/W1AW", "KH6"},
                   {"W1AW/KH6", "KH6"},
                   {"P5/4Q4QQ", "P5"},
                   {"AA7V/VP2V", "VP2V"},
                   {"3D2R/W1AW", "3D2/R"},
                   {"JD1/JA6GXK", "JD1/M"},
                   {"HB0/DK3RED", "HB0"},
                   {"W1AW/VE3", "VE"},
                   {"DL1ABC/IMD", "DL"},
                   {"MM/W1AW", "GM"},
                   {"IK/DL7JOM", "I"},
                   {"N1RO/C6A", "C6"},
                   {"N8PPQ/LT", "W"},
                   {"QRP/JA1ABC", "JA"},
                   {"W1AW/Y2K", "W"}});
}

TEST(CallAnalysis, WhatIsNoCallHasNoEntity) {
  for (const char* call : {"", " ", "/", "//", "/P", "XX", "0", "QQ1ABC", "ＪＡ１", "1/2/3/4"}) {
    EXPECT_EQ(delivered<CallTables>().calls.find(call).entity, nullptr) << call;
  }
  EXPECT_EQ(delivered<CallTables>()
                .calls.find(std::string(1000, 'W') + "/" + std::string(1000, '1'))
                .prefix(),
            "W");
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
  EXPECT_TRUE(contains(message((std::string(japan) + japan).c_str(), entry), "2 行目"));
  EXPECT_TRUE(contains(message(japan, (std::string(entry) + "JA 339\r\n").c_str()), "2 行目"));
  EXPECT_TRUE(contains(message(japan, (std::string(entry) + "A" + (entry + 1)).c_str()), "2 行目"));
  EXPECT_NE(message(japan, ""), "-");
}

}  // namespace
}  // namespace tobarine
