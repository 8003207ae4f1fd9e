#include "log/contact.h"

#include <gtest/gtest.h>
#include <string>

namespace tobarine {
namespace {

TEST(Field, NamesAndFieldsAgree) {
  for (std::size_t i = 0; i < kFieldCount; ++i) {
    const auto field = static_cast<Field>(i);
    EXPECT_EQ(field_of(field_name(field)), field) << field_name(field);
  }
  EXPECT_EQ(field_of("qso_Date"), Field::kQsoDate);
  EXPECT_EQ(field_name(Field::kMyGridsquare), "MY_GRIDSQUARE");
  for (const char* name : {"", "QSO_DAT", "QSO_DATEX", "APP_LOTW_RXQSO", "ADIF_VER", "JCC"}) {
    EXPECT_EQ(field_of(name), Field::kOther) << name;
  }
}

TEST(Contact, KeepsOrderNamesAndValues) {
  Contact contact;
  contact.set("call", "JA1QQQ");
  contact.set("App_Lotw_RXQSO", "2024-01-01");
  contact.set(Field::kMode, "CW");
  contact.set("APP_LOTW_RXQSO", "2025-01-01");  // replaces, and keeps place and name
  contact.set(Field::kName, "");
  ASSERT_EQ(contact.size(), 3U);
  EXPECT_EQ(contact[0].name, "CALL");
  EXPECT_EQ(contact[1].name, "App_Lotw_RXQSO");
  EXPECT_EQ(contact[1].value, "2025-01-01");
  EXPECT_EQ(contact.get("MODE"), "CW");
  EXPECT_FALSE(contact.has(Field::kName));
  contact.remove(Field::kCall);
  EXPECT_EQ(contact.size(), 2U);
  EXPECT_EQ(contact.get(Field::kCall), "");
  contact.clear();
  EXPECT_EQ(contact.size(), 0U);
  EXPECT_EQ(contact.get("app_lotw_rxqso"), "");
}

TEST(Contact, TakesItsOwnValues) {
  Contact contact;
  contact.set(Field::kQth, std::string(40, 'x'));
  for (int i = 0; i < 100; ++i) {
    contact.set("APP_" + std::to_string(i), contact.get(Field::kQth));
  }
  for (std::size_t i = 0; i < contact.size(); ++i) {
    EXPECT_EQ(contact[i].value, std::string(40, 'x')) << contact[i].name;
  }
}

TEST(Contact, MomentAndEntity) {
  Contact contact;
  EXPECT_FALSE(contact.moment());
  contact.set_moment(*Moment::read("2024/01/01", "08:59", Zone::kJst));
  EXPECT_EQ(contact.get(Field::kQsoDate), "20231231");
  EXPECT_EQ(contact.get(Field::kTimeOn), "2359");
  EXPECT_EQ(contact.stated_zone(), Zone::kJst);
  EXPECT_EQ(contact.moment(), Moment::read("20231231", "2359", Zone::kUtc));
  contact.remove(Field::kTimeOn);
  EXPECT_EQ(contact.moment()->precision(), Moment::Precision::kDay);
  for (const auto& [text, number] :
       {std::pair{"339", std::optional(339U)}, {" 339 ", {339U}}, {"339x", {}}, {"-1", {}}}) {
    contact.set(Field::kDxcc, text);
    EXPECT_EQ(contact.dxcc(), number) << text;
  }
}

}  // namespace
}  // namespace tobarine
