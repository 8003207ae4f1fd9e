// The master of Japan's cities (JCC), guns (JCG) and wards (ku): `JCC_JCG.mas`.
//
// File form: CP932 text, one place a line, sorted by number; lines that begin with "#" are
// comments. Fields separated by tabs: number (4 digits a city, 5 a gun, 6 a ward), last day it
// existed (yyyy/mm/dd; "*" when it is gone and the day is not known; empty for an existing place),
// prefecture, full place name as Hamlog writes a QTH.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace tobarine {

struct JccPlace {
  std::string number;
  std::string abolished;   // empty: exists
  std::string prefecture;  // "北海道", "東京都", "神奈川県"
  std::string name;        // "神奈川県横浜市鶴見区"

  bool operator==(const JccPlace&) const = default;
};

class JccMaster {
 public:
  void load(const std::filesystem::path& path);  // throws FileError, RecordError

  // nullptr when the number is not there. Blanks around it do not matter.
  const JccPlace* find(std::string_view number) const;

  const std::vector<JccPlace>& places() const { return places_; }  // sorted by number

  // The file's text (UTF-8, lines ended by LF) for sorted places.
  static std::string file_text(const std::vector<JccPlace>& places);

 private:
  std::vector<JccPlace> places_;
};

}  // namespace tobarine
