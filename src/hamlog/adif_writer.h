// ADIF as it is written for Logger32 and for eQSL.cc: CP932, CR LF, every length in CP932 bytes.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "hamlog/h2l_rules.h"
#include "text/output_file.h"

namespace tobarine {

class AdifWriter {
 public:
  // The file stays the caller's, who closes it.
  AdifWriter(OutputFile& file, AdifTarget target, bool write_qth)
      : file_(file), target_(target), write_qth_(write_qth) {}

  void write_header();

  // Writes one contact; returns the number of characters that CP932 lacks (written as "?").
  std::size_t write(const AdifContact& contact);

 private:
  void put(std::string_view ascii) { file_.buffer().append(ascii); }
  void tag(std::string_view opening, std::string_view value);
  void common_tags(const AdifContact& contact);
  void logger32_lines(const AdifContact& contact);
  void eqsl_line(const AdifContact& contact);

  OutputFile& file_;
  AdifTarget target_;
  bool write_qth_;
  std::size_t lacking_ = 0;
  std::string encoded_;
};

}  // namespace tobarine
