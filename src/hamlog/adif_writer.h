// ADIF as it is written for Logger32 and for eQSL.cc: CP932, CR LF, every length in CP932 bytes.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>

#include "hamlog/h2l_rules.h"
#include "text/output_file.h"

namespace tobarine {

// Whether this program has written the file, for Logger32 or for eQSL.cc: its header says so.
bool is_own_adif(const std::filesystem::path& file);

class AdifWriter {
 public:
  // The file stays the caller's, who closes it.
  AdifWriter(OutputFile& file, AdifTarget target, bool write_qth)
      : file_(file), text_(file.buffer()), target_(target), write_qth_(write_qth) {}

  void write_header();

  // What could not be written as it is.
  struct Written {
    std::size_t lacking = 0;    // characters that CP932 lacks, written as "?"
    std::size_t line_ends = 0;  // CR and LF in values, written as blanks
  };
  Written write(const AdifContact& contact);

 private:
  void put(std::string_view text) { text_.append(text); }
  void put_state(std::string_view state);

  // The opening as far as the ":", then the value's length, the type with its ">", and the value.
  void tag(std::string_view opening, std::string_view value, std::string_view type = ">");

  void common_tags(const AdifContact& contact);
  void logger32_lines(const AdifContact& contact);
  void eqsl_line(const AdifContact& contact);

  OutputFile& file_;
  std::string& text_;  // the file's buffer
  AdifTarget target_;
  bool write_qth_;
  Written written_;
  std::string encoded_;  // a value's bytes
};

}  // namespace tobarine
