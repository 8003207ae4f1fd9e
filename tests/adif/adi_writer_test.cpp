#include "adif/adi_writer.h"

#include <gtest/gtest.h>

#include "adif/adi_reader.h"
#include "test_folder.h"
#include "text/cp932.h"

namespace tobarine {
namespace {

class AdiWriting : public ::testing::Test {
 protected:
  void write(AdiEncoding encoding) {
    findings_ = {};
    OutputFile file(folder_ / "out.adi");
    AdiWriter writer(file, encoding, "20240501 123456");
    EXPECT_TRUE(writer.put(contact_, findings_));
    writer.finish();
    file.close();
    const std::string bytes = TestFolder::bytes_of(folder_ / "out.adi");
    record_ = bytes.substr(bytes.find("<EOH>\r\n") + 7);
  }

  TestFolder folder_;
  Contact contact_;
  FindingLog findings_;
  std::string record_;
};

TEST_F(AdiWriting, FixedOrderStandardModeBandFromFrequency) {
  contact_.set("APP_X_Y", "zz");
  contact_.set("COMMENT", "tnx");
  contact_.set("MODE", "FT4");
  contact_.set("FREQ", "7.0475");
  contact_.set("TIME_ON", "1205");
  contact_.set("QSO_DATE", "20240501");
  contact_.set("CALL", "JA1QQQ");
  write(AdiEncoding::kAscii);
  EXPECT_EQ(record_,
            "<CALL:6>JA1QQQ <QSO_DATE:8>20240501 <TIME_ON:4>1205 <BAND:3>40m <FREQ:6>7.0475 "
            "<MODE:4>MFSK <SUBMODE:3>FT4 <APP_X_Y:2>zz <COMMENT:3>tnx <EOR>\r\n");
  EXPECT_TRUE(findings_.kept().empty());
}

TEST_F(AdiWriting, EncodingsCountBytesAndPutJapaneseLast) {
  contact_.set("CALL", "ＪＡ１ＱＱＱ");
  contact_.set("NAME", "山田");
  contact_.set("QTH", "Tokyo");
  write(AdiEncoding::kUtf8);
  EXPECT_EQ(record_, "<QTH:5>Tokyo <CALL:18>ＪＡ１ＱＱＱ <NAME:6>山田 <EOR>\r\n");
  write(AdiEncoding::kCp932);
  EXPECT_EQ(record_, to_cp932("<QTH:5>Tokyo <CALL:12>ＪＡ１ＱＱＱ <NAME:4>山田 <EOR>\r\n"));
  write(AdiEncoding::kAscii);
  EXPECT_EQ(record_, "<CALL:6>JA1QQQ <QTH:5>Tokyo <EOR>\r\n");
  EXPECT_EQ(findings_.count(FindingKind::kNotAscii), 1U);
  EXPECT_EQ(findings_.kept().front().text, "NAME=山田");
}

TEST_F(AdiWriting, WhatTheStandardDoesNotAllowIsPutAsideAndComesBack) {
  const auto fields =
      std::to_array<std::pair<std::string_view, std::string_view>>({{"CALL", "JA1QQQ"},
                                                                    {"QSO_DATE", "20230230"},
                                                                    {"TIME_ON", "2460"},
                                                                    {"BAND", "41m"},
                                                                    {"FREQ", "7.0.1"},
                                                                    {"MODE", "DV"},
                                                                    {"GRIDSQUARE", "PM9"},
                                                                    {"QSL_RCVD", "X"}});
  for (const auto& [name, value] : fields) contact_.set(name, value);
  write(AdiEncoding::kUtf8);
  EXPECT_EQ(findings_.count(FindingKind::kValueNotAllowed), 6U);
  EXPECT_EQ(findings_.count(FindingKind::kModeNotStandard), 1U);
  EXPECT_NE(record_.find("<APP_TOBARINE_QSO_DATE:8>20230230 "), std::string::npos);
  EXPECT_EQ(record_.find("<QSO_DATE"), std::string::npos);

  AdiReader reader(folder_ / "out.adi", findings_);
  Contact read;
  ASSERT_TRUE(reader.next(read, findings_));
  put_back(read);
  EXPECT_EQ(read.size(), fields.size());
  for (const auto& [name, value] : fields) EXPECT_EQ(read.get(name), value) << name;
}

}  // namespace
}  // namespace tobarine
