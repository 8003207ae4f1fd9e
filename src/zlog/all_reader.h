// zLog's text log (.ALL), read: a header line, then one contact a line in fixed columns, CP932.
//
// Columns, counted in characters from 1: 1-10 date yyyy/mm/dd, 12-16 time hh:mm, 18-28 call, 31-33
// report sent, 43-45 report received, 67-71 band in MHz, 72-74 mode, 80-99 memo. A line that ends
// before a column leaves its field empty, so that every line behind the header is a contact.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>

#include "text/input_file.h"
#include "zlog/zlog_reader.h"

namespace tobarine {

// What the first line (CP932) says of a file that was opened as a text log.
enum class TextLogForm { kZlogAll, kZlogTxt, kOther };
TextLogForm text_log_form(std::string_view first_line);

// Throws FileError when the file does not begin as a .ALL does.
void refuse_foreign_all(const std::filesystem::path& path);

// The number of lines behind the header. Throws FileError, RecordError.
std::size_t count_all_contacts(const std::filesystem::path& path);

class AllReader : public ZlogReader {
 public:
  explicit AllReader(const std::filesystem::path& path);
  bool next(ZlogContact& contact, FindingLog& findings) override;
  std::size_t number() const override { return lines_.line(); }
  const InputFile& file() const override { return lines_.file(); }

 private:
  LineReader lines_;
  std::string text_;
};

}  // namespace tobarine
