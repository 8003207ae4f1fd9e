// zLog's binary logs, .ZLOX and .ZLO, read as today's zLog means them. See zlox_record.h.
#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "rules/findings.h"
#include "text/input_file.h"
#include "zlog/contest.h"
#include "zlog/log_zone.h"
#include "zlog/zlog_qso.h"

namespace tobarine {

class ZloxReader {
 public:
  // The form is what the file begins with. `chosen_zone`, 'U' or 'J', wins over what the file says.
  // Throws FileError, also for a file that is none of the two forms.
  explicit ZloxReader(const std::filesystem::path& path,
                      std::optional<char> chosen_zone = std::nullopt);

  const ZlogHead& head() const { return head_; }
  const ContestInfo& contest() const { return contest_; }  // its contacts: whole records
  const LogZone& zone() const { return zone_; }

  // Replaces all of the contact; false at the end. A contact that is odd, without day and time for
  // one, is handed out and reported; a last record that is cut off is reported, and so is a header
  // that speaks of more contacts than there are. Throws FileError.
  bool next(ZlogQso& qso, FindingLog& findings);

  std::size_t number() const { return number_; }  // of the record last read; the header is 1
  const InputFile& file() const { return file_; }

 private:
  std::size_t read_record();
  void report_end(std::size_t bytes, FindingLog& findings) const;

  InputFile file_;
  std::vector<unsigned char> buffer_;  // many records at a time
  std::size_t begin_ = 0;              // of what is not taken yet, and its end
  std::size_t end_ = 0;
  std::vector<unsigned char> record_;  // as long as the form has them
  std::size_t number_ = 0;
  std::size_t promised_ = 0;  // contacts, by the header
  ContestInfo contest_;
  LogZone zone_;
  ZlogHead head_;
};

}  // namespace tobarine
