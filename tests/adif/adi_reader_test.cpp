#include "adif/adi_reader.h"

#include <gtest/gtest.h>

#include "adif/value_check.h"
#include "test_folder.h"
#include "text/cp932.h"
#include "text/error.h"

namespace tobarine {
namespace {

class AdiReading : public ::testing::Test {
 protected:
  // Every contact as "NAME=value|...", in the order of the file.
  std::vector<std::string> read(std::string_view bytes) {
    const auto file = folder_.file("log.adi", bytes);
    findings_ = {};
    AdiReader reader(file, findings_);
    std::vector<std::string> contacts;
    lines_.clear();
    for (Contact contact; reader.next(contact, findings_);) {
      std::string text;
      for (std::size_t i = 0; i < contact.size(); ++i) {
        if (i > 0) text += '|';
        text += std::string(contact[i].name) + '=' + std::string(contact[i].value);
      }
      contacts.push_back(text);
      lines_.push_back(contact.origin.line);
    }
    return contacts;
  }
  std::string kinds() const {
    std::string text;
    for (const Finding& finding : findings_.kept()) {
      text += std::string(finding_name(finding.kind)) + "@" + std::to_string(finding.line) + " ";
    }
    return text;
  }
  using Contacts = std::vector<std::string>;

  TestFolder folder_;
  FindingLog findings_;
  std::vector<std::size_t> lines_;
};

const std::string kTwo = "CALL=JA1QQQ|BAND=40m|MODE=CW;CALL=W1QQQ|BAND=20m|MODE=SSB|COMMENT=a < b";

std::string joined(const std::vector<std::string>& contacts) {
  std::string text;
  for (const std::string& contact : contacts) text += (text.empty() ? "" : ";") + contact;
  return text;
}

TEST_F(AdiReading, EveryLayoutReadsTheSame) {
  const std::string one = "<CALL:6>JA1QQQ<BAND:3>40m<MODE:2>CW<EOR>";
  const std::string two = "<CALL:5>W1QQQ<BAND:3>20m<MODE:3>SSB<COMMENT:5>a < b<EOR>";
  const std::string spread =
      "<call:6>JA1QQQ\r\n<Band:3:E>40m\r\n<mode:2>CW\r\n<eor>\r\n\r\n"
      "<CALL:5>W1QQQ\r\n<BAND:3>20m // 14 MHz\r\n<MODE:3>SSB\r\n<COMMENT:5>a < b\r\n<EOR>\r\n";
  for (const std::string& text :
       {one + two, one + "\r\n" + two + "\r\n", spread, "Some logger\r\n<EOH>\r\n" + spread,
        "<ADIF_VER:5>3.1.4<EOH>" + one + two, "<ADIF_VER:5>3.1.4\n" + one + two,
        std::string("\xEF\xBB\xBF") + one + two, one + two + "<EOF>\x1a",
        "no header's end\n" + one + two}) {
    EXPECT_EQ(joined(read(text)), kTwo) << text;
  }
  std::string with_cr = spread;
  std::erase(with_cr, '\n');
  EXPECT_EQ(joined(read(with_cr)), kTwo);
  EXPECT_EQ(read(spread).size(), 2U);
  EXPECT_EQ(lines_, (std::vector<std::size_t>{1, 6}));
  EXPECT_EQ(kinds(), "");
}

TEST_F(AdiReading, LengthsThatLieAreRepairedAndTold) {
  const std::string name = "山田 太郎";  // 13 bytes of UTF-8, 9 of CP932, 5 characters
  const std::string expected = "CALL=JA1QQQ|NAME=" + name + "|QTH=x";
  for (const char* length : {"5", "9", "13", "3", "40"}) {
    const std::string text =
        "<CALL:6>JA1QQQ<NAME:" + std::string(length) + ">" + name + "<QTH:1>x<EOR>";
    EXPECT_EQ(joined(read(text)), expected) << length;
    EXPECT_EQ(findings_.count(FindingKind::kTagRepaired), length != std::string("13")) << length;
    EXPECT_EQ(joined(read(to_cp932(text))), expected) << length << " in CP932";
  }
  struct Row {
    const char* text;
    const char* contact;
    FindingKind kind;
  };
  for (const Row& row : {
           Row{"<CALL:9>JA1QQQ<BAND:3>40m<EOR>", "CALL=JA1QQQ|BAND=40m", FindingKind::kTagRepaired},
           {"<CALL:4>JA1QQQ<BAND:3>40m<EOR>", "CALL=JA1QQQ|BAND=40m", FindingKind::kTagRepaired},
           {"<CALL>JA1QQQ <BAND:3>40m<EOR>", "CALL=JA1QQQ|BAND=40m", FindingKind::kTagRepaired},
           {"<CALL:6>JA1QQQ BAND:3>40m <MODE:2>CW<EOR>", "CALL=JA1QQQ|BAND=40m|MODE=CW",
            FindingKind::kTagRepaired},
           {"<CALL:6>JA1QQQ<NAME:4>Taro Yamada<EOR>", "CALL=JA1QQQ|NAME=Taro",
            FindingKind::kTextBetweenTags},
           {"<CALL:6>JA1QQQ<MODE:2>CW<MODE:3>SSB<EOR>", "CALL=JA1QQQ|MODE=CW",
            FindingKind::kFieldRepeated},
           {"<CALL:6>JA1QQQ<MODE:2>CW", "CALL=JA1QQQ|MODE=CW", FindingKind::kNoEndOfRecord},
           {"<CALL:6>JA1QQQ<MODE:99>CW", "CALL=JA1QQQ|MODE=CW", FindingKind::kTagRepaired},
           {"<CALL:6>JA1QQQ<CALL:5>W1QQQ<EOR>", "CALL=JA1QQQ;CALL=W1QQQ",
            FindingKind::kNoEndOfRecord},
           {"<CALL:6>JA1QQQ<EOR>what is this<EOR>", "CALL=JA1QQQ", FindingKind::kUnreadRecord},
       }) {
    EXPECT_EQ(joined(read(row.text)), row.contact) << row.text;
    EXPECT_EQ(findings_.count(row.kind), 1U) << row.text << ": " << kinds();
  }
}

TEST_F(AdiReading, KeepsUnknownFieldsAndMixedEncodings) {
  EXPECT_EQ(joined(read("<CALL:6>JA1QQQ<APP_X_Y:2>zz<MY_GRIDSQUARE:4>PM95<NOTES:7>a\r\nb <c<EOR>")),
            "CALL=JA1QQQ|APP_X_Y=zz|MY_GRIDSQUARE=PM95|NOTES=a\r\nb <c");
  const std::string cp932 = to_cp932("横浜市の山田");
  EXPECT_EQ(joined(read("<CALL:6>JA1QQQ<NAME:6>山田<QTH:12>" + cp932 + "<EOR>")),
            "CALL=JA1QQQ|NAME=山田|QTH=横浜市の山田");
  EXPECT_EQ(findings_.count(FindingKind::kInvalidByte), 1U);
}

TEST_F(AdiReading, RefusesWhatIsNoAdifAndWhatIsTooLong) {
  EXPECT_EQ(read("").size() + read(" \r\n").size() + read("x <EOH> \r\n").size(), 0U);
  EXPECT_THROW(read("JA1QQQ,24/01/01,10:00J\r\n"), FileError);
  EXPECT_THROW(read(std::string("\xFF\xFE<\0C\0A\0", 8)), FileError);
  EXPECT_THROW(read("<CALL:6>JA1QQQ<NOTES:3000000>" + std::string(3'000'000, 'x') + "<EOR>"),
               RecordError);
  std::string endless = "<CALL:6>JA1QQQ";
  for (int i = 0; i < 100'000; ++i) endless += "<APP_" + std::to_string(i) + ":10>0123456789";
  EXPECT_THROW(read(endless), RecordError);
}

TEST(AllowedValues, FormsLimitsAndLists) {
  struct Row {
    Field field;
    const char* good;
    const char* bad;
  };
  for (const Row& row : {
           Row{Field::kQsoDate, "20240229", "20230229"},
           {Field::kQsoDate, "19450101", "19291231"},
           {Field::kTimeOn, "235959", "2360"},
           {Field::kTimeOn, "0000", ""},
           {Field::kBand, "40M", "41m"},
           {Field::kMode, "mfsk", "FT4X"},
           {Field::kDxcc, "339", "338"},
           {Field::kFreq, "7.01", "7.0.1"},
           {Field::kFreq, "7", "."},
           {Field::kCqz, "40", "41"},
           {Field::kCqz, "1", "0"},
           {Field::kAntEl, "-90", "-91"},
           {Field::kStx, "0", "-1"},
           {Field::kGridsquare, "PM95vq", "PM9"},
           {Field::kGridsquare, "RR99XX", "SR99"},
           {Field::kGridsquareExt, "aa12", "a1"},
           {Field::kVuccGrids, "PM95,PM96", "PM95,x"},
           {Field::kLat, "N035 40.123", "N35 40.123"},
           {Field::kIota, "AS-007", "VISA-CARD"},
           {Field::kSotaRef, "JA/ST-013", "JA-ST-013"},
           {Field::kPotaRef, "JP-1234,K-0001@US-CA", "JP-12"},
           {Field::kWwffRef, "JAFF-0001", "JA-0001"},
           {Field::kQslRcvd, "y", "X"},
           {Field::kPropMode, "SAT", "SATELLITE"},
           {Field::kSwl, "Y", "yes"},
       }) {
    EXPECT_TRUE(is_allowed(row.field, row.good)) << field_name(row.field) << ' ' << row.good;
    EXPECT_FALSE(is_allowed(row.field, row.bad)) << field_name(row.field) << ' ' << row.bad;
  }
  EXPECT_TRUE(is_allowed(Field::kComment, "何でも"));
}

}  // namespace
}  // namespace tobarine
