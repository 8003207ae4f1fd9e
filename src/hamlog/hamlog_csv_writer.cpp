#include "hamlog/hamlog_csv_writer.h"

#include "text/cp932.h"
#include "text/strings.h"

namespace tobarine {

WrittenLine write_hamlog_line(const HamlogColumns& columns, std::string& buffer) {
  WrittenLine result;
  for (std::size_t i = 0; i < columns.size(); ++i) {
    buffer.append(i == 0 ? "\"" : ",\"");
    if (!contains(columns[i], "\"")) {
      result.lacking += encode_cp932(columns[i], buffer);
    } else {
      for_each_piece(columns[i], '"', [&](std::string_view piece) {
        result.lacking += encode_cp932(piece, buffer);
        ++result.quotes_dropped;
      });
      --result.quotes_dropped;
    }
    buffer += '"';
  }
  buffer.append("\r\n");
  return result;
}

}  // namespace tobarine
