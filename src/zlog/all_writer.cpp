#include "zlog/all_writer.h"

#include <string_view>

#include "text/cp932.h"
#include "text/strings.h"
#include "text/utf8.h"
#include "zlog/zlo_record.h"

namespace tobarine {
namespace {

// At most `longest` characters of the value, filled up with blanks to `width`.
void put_column(std::string_view value, std::size_t longest, std::size_t width, std::string& line) {
  value = left_chars(value, longest);
  const std::size_t chars = is_ascii(value) ? value.size() : char_count(value);
  line.append(value).append(width - chars, ' ');
}

}  // namespace

AllWriter::AllWriter(OutputFile& file) : file_(file) {
  file_.buffer().append("zLog for Windows \r\n");
  file_.end_record();
}

std::size_t AllWriter::write(const ZlogEntry& entry) {
  const std::string_view mode = entry.mode == zlo::kModes[zlo::kModeRtty]
                                    ? zlo::kRttyInTextLogs
                                    : std::string_view(entry.mode);
  line_.clear();
  put_column(entry.all_moment.date, 10, 11, line_);
  put_column(entry.all_moment.time, 5, 6, line_);
  put_column(entry.call, 12, 13, line_);
  put_column(entry.his_rst, 3, 4, line_);
  put_column(entry.sent_number, 7, 8, line_);
  put_column(entry.my_rst, 3, 4, line_);
  put_column(entry.received_number, 7, 8, line_);
  put_column("-", 1, 6, line_);
  put_column("-", 1, 6, line_);
  put_column(entry.band, 5, 5, line_);
  put_column(mode, 5, 5, line_);
  put_column(std::to_string(entry.points), 3, 3, line_);
  put_memo(entry, true, line_);
  blank_line_ends(line_);
  const std::size_t lacking = encode_cp932(line_, file_.buffer());
  file_.buffer().append("\r\n");
  file_.end_record();
  return lacking;
}

}  // namespace tobarine
