// The user's two conversion tables between ADIF ("L") and Hamlog's CSV ("H"): bands and modes.
//
// File form: one row a line, double-quoted fields separated by commas, CP932. A band row holds
// number, ADIF band, Hamlog frequency, keyword (memo) and placement; a mode row number, ADIF mode
// and Hamlog mode. Numbers are ignored on reading; a row with a blank one ends the table.
#pragma once

#include <array>
#include <cstddef>
#include <filesystem>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "text/keep_rule.h"

namespace tobarine {

// The texts of a row behind its number.
using TableRow = std::vector<std::string>;

// Throws FileError; RecordError (line = row) for a row too many or with another number of columns,
// and for a text that is not closed or holds a line end.
std::vector<TableRow> read_table(const std::filesystem::path& path, std::size_t columns,
                                 std::size_t most);

// Writes the rows up to the first whose first column is blank, at most so many of them, numbered
// from 1. The file is replaced as a whole. Throws FileError.
void save_table(const std::filesystem::path& path, std::span<const TableRow> rows, std::size_t most,
                const KeepRule& rule = {});

struct BandRow {
  std::string adif;       // ADIF band name
  std::string freq;       // Hamlog frequency, MHz
  std::string memo;       // keyword that marks this band in the remarks
  std::string placement;  // "1" to "4": left or right of remarks 1, left or right of remarks 2
};

struct ModeRow {
  std::string adif;
  std::string csv;
};

// Rows that are not in use hold empty texts, and are compared like any other.
class BandTable {
 public:
  static constexpr std::size_t kColumns = 4;
  static constexpr std::size_t kRows = 22;
  static constexpr std::size_t kCompared = 20;  // the last two rows are never looked at
  static constexpr std::size_t kSaved = 10;     // saving keeps no more

  void load(const std::filesystem::path& path);  // throws as read_table() does

  std::size_t size() const { return size_; }  // rows loaded
  const BandRow& operator[](std::size_t row) const { return rows_[row]; }

  // The first of the compared rows whose ADIF band / Hamlog frequency is this text in upper case;
  // nullptr: none.
  const BandRow* find_adif(std::string_view upper_band) const;
  const BandRow* find_freq(std::string_view freq) const;

 private:
  const BandRow* find(std::string_view text, std::string BandRow::*key) const;

  std::array<BandRow, kRows> rows_;
  std::array<BandRow, kRows> upper_;  // the rows in upper case, made once
  std::size_t size_ = 0;
};

class ModeTable {
 public:
  static constexpr std::size_t kColumns = 2;
  static constexpr std::size_t kRows = 32;
  static constexpr std::size_t kCompared = 30;
  static constexpr std::size_t kSaved = 20;

  void load(const std::filesystem::path& path);  // as BandTable::load

  std::size_t size() const { return size_; }
  const ModeRow& operator[](std::size_t row) const { return rows_[row]; }

  // Replaces a mode in place. Every row is compared, also after a match, and with the value already
  // replaced: the last match of the chain wins. True when any row matched.
  bool adif_to_csv(std::string& mode) const { return replace(mode, &ModeRow::adif, &ModeRow::csv); }
  bool csv_to_adif(std::string& mode) const { return replace(mode, &ModeRow::csv, &ModeRow::adif); }

 private:
  bool replace(std::string& mode, std::string ModeRow::*from, std::string ModeRow::*to) const;

  std::array<ModeRow, kRows> rows_;
  std::array<ModeRow, kRows> upper_;  // the rows in upper case, made once
  std::size_t size_ = 0;
};

}  // namespace tobarine
