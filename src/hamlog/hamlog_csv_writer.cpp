#include "hamlog/hamlog_csv_writer.h"

#include "text/cp932.h"
#include "text/strings.h"

namespace tobarine {

WrittenLine write_hamlog_line(const HamlogColumns& columns, std::string& buffer) {
  WrittenLine result;
  const std::size_t before = buffer.size();
  std::size_t most = 2;
  for (const std::string_view column : columns) most += column.size() + 3;
  buffer.resize(before + most);
  char* out = buffer.data() + before;
  for (const std::string_view column : columns) {
    *out++ = '"';
    std::size_t ascii = 0;
    for (; ascii < column.size() && static_cast<unsigned char>(column[ascii]) < 0x80; ++ascii) {
      if (column[ascii] == '"') {
        ++result.quotes_dropped;
      } else {
        *out++ = column[ascii];
      }
    }
    if (ascii < column.size()) {
      for_each_piece(column.substr(ascii), '"', [&](std::string_view piece) {
        char* next_out = out;  // a copy, so that the loop's own pointer stays in a register
        result.lacking += encode_cp932(piece, next_out);
        out = next_out;
        ++result.quotes_dropped;
      });
      --result.quotes_dropped;
    }
    *out++ = '"';
    *out++ = ',';
  }
  buffer.resize(static_cast<std::size_t>(out - 1 - buffer.data()));
  result.line_ends = blank_line_ends(buffer, before);
  buffer += "\r\n";
  return result;
}

void report_written_line(const WrittenLine& written, std::size_t line, std::string_view call,
                         FindingLog& findings) {
  if (written.quotes_dropped > 0) {
    findings.add(FindingKind::kQuoteDropped, line, call,
                 std::to_string(written.quotes_dropped) + " 個");
  }
  report_line_ends(written.line_ends, line, call, findings);
  if (written.lacking > 0) {
    findings.add(FindingKind::kNotEncodable, line, call, std::to_string(written.lacking) + " 文字");
  }
}

}  // namespace tobarine
