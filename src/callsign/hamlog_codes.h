// Hamlog's DX codes and the DXCC entities: `h2l_cty.mas` (code to number) and `l2h_cty.mas` (number
// to code and QTH text).
//
// Both files: CP932 text, one entity a line, fixed columns counted from 1.
//   h2l_cty.mas: 1-5 Hamlog code   7-9 DXCC number   11-23 prefix   25-50 name
//   l2h_cty.mas: 1-3 DXCC number   5-17 prefix   19-23 Hamlog code   25-50 QTH text
// A blank code is one that nobody has entered yet.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "callsign/entities.h"

namespace tobarine {

struct CodeRow {
  std::string code;   // empty: unknown
  unsigned dxcc = 0;  // 0 only in a hand-made line without a number
  std::string prefix;
  std::string text;  // entity name or QTH text
};

// The rows of `h2l_cty.mas`, in file order, and the way from a code to its entity.
class HamlogToDxcc {
 public:
  void load(const std::filesystem::path& path);  // throws FileError, RecordError

  // The DXCC number as ADIF writes it, "0" when the code is not in the table. Blanks around the
  // code and the case of its letters do not matter; the first row with a code counts.
  std::string_view find(std::string_view code) const;

  const std::vector<CodeRow>& rows() const { return rows_; }

 private:
  std::vector<CodeRow> rows_;
  std::unordered_map<std::string, std::string> numbers_;
};

// The rows of `l2h_cty.mas`, in file order.
class DxccToHamlog {
 public:
  static constexpr std::size_t kRows = 350;

  // Throws FileError; RecordError when there are more than kRows lines.
  void load(const std::filesystem::path& path);

  const CodeRow* find(unsigned dxcc) const;  // the first row; nullptr: none
  const std::vector<CodeRow>& rows() const { return rows_; }

 private:
  std::vector<CodeRow> rows_;
  std::vector<std::int16_t> index_;  // by DXCC number; -1: none
};

// The files' texts (UTF-8, lines ended by LF).
std::string h2l_file_text(const std::vector<CodeRow>& rows);
std::string l2h_file_text(const std::vector<CodeRow>& rows);

}  // namespace tobarine
