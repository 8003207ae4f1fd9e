// zLog's binary logs, .ZLOX and .ZLO, written as today's zLog does. See zlox_record.h.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>

#include "rules/findings.h"
#include "text/output_file.h"
#include "zlog/zlog_qso.h"
#include "zlog/zlox_record.h"

namespace tobarine {

class ZloxWriter {
 public:
  enum class Form { kZlox, kZlo };

  // Creates the file and writes its header; what that cannot hold is reported. Throws FileError.
  ZloxWriter(std::filesystem::path path, Form form, ZlogHead head, FindingLog& findings,
             const KeepRule& rule = {});

  // False: the log cannot hold the contact (no day and time, no call, no band of its own), which is
  // reported, as is what it holds in part only. `number` is for the findings. Throws FileError.
  bool write(const ZlogQso& qso, std::size_t number, FindingLog& findings);

  // Closes the file and puts the number of contacts into the header. Throws FileError.
  void close();

  std::size_t contacts() const { return contacts_; }

 private:
  zlo::Buffer record();
  void report_not_held(const ZlogQso& qso, std::size_t number, FindingLog& findings) const;

  std::filesystem::path path_;
  ZlogHead head_;
  OutputFile file_;
  zlox::Record buffer_{};
  std::size_t record_size_;
  std::uint32_t contacts_ = 0;
};

}  // namespace tobarine
