// The intermediate file of zLog logs (`zlog_1.csv`): a contact as the writers of ADIF take it, one
// a line, sixteen double-quoted fields, CP932, CR LF.
//
// Fields, from 0: home call, portable part, date yy/mm/dd, time hh:mm and zone letter, report sent,
// report received, frequency in MHz, mode, six empty fields, "$DX" when the portable part stands in
// front of the home call, and the call as logged.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "rules/findings.h"
#include "text/output_file.h"
#include "zlog/zlog_reader.h"

namespace tobarine {

inline constexpr std::size_t kIntermediateFields = 16;
inline constexpr std::size_t kDxMarkField = 14;
inline constexpr std::string_view kDxMark = "$DX";

// A call taken apart at its first "/".
struct CallParts {
  std::string_view home;
  std::string_view portable;  // empty: none
  bool prefix = false;        // the portable part stands in front: it is shorter, and no digit
};
CallParts split_call(std::string_view call);

class IntermediateWriter {
 public:
  // The file stays the caller's, who closes it. `zone`: "J" or "U", of the log's times.
  IntermediateWriter(OutputFile& file, char zone) : file_(file), zone_(zone) {}

  // Writes one contact; `number` is for the findings.
  void write(const ZlogContact& contact, std::size_t number, FindingLog& findings);

 private:
  void set_freq(const ZlogContact& contact, std::size_t number, FindingLog& findings);

  OutputFile& file_;
  char zone_;
  std::string freq_;       // of the last contact: what cannot be read leaves it as it stands
  std::string band_;       // of the last contact, as the band rule turns it
  std::string band_160m_;  // where the band rule puts that one name
  std::string time_;
};

}  // namespace tobarine
