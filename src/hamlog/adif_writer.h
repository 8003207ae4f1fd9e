// ADIF as it is written for Logger32 and for eQSL.cc: CP932, CR LF, every length in CP932 bytes.
#pragma once

#include <cstddef>
#include <cstring>
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
      : file_(file), target_(target), write_qth_(write_qth) {}

  void write_header();

  // Writes one contact; returns the number of characters that CP932 lacks (written as "?").
  std::size_t write(const AdifContact& contact);

 private:
  // A fixed text; its length is known when the program is compiled.
  template <std::size_t N>
  void put(const char (&text)[N]) {
    std::memcpy(out_, text, N - 1);
    out_ += N - 1;
  }
  void put_value(std::string_view value);
  void put_encoded(std::string_view value);
  void put_state(std::string_view state);

  // The opening as far as the ":", then the value's length, ">" and the value.
  template <std::size_t N>
  void tag(const char (&opening)[N], std::string_view value) {
    put(opening);
    tag_value(value);
  }
  void tag_value(std::string_view value);

  void common_tags(const AdifContact& contact);
  void logger32_lines(const AdifContact& contact);
  void eqsl_line(const AdifContact& contact);

  OutputFile& file_;
  AdifTarget target_;
  bool write_qth_;
  std::size_t lacking_ = 0;
  std::string text_;     // of the record being written, and room behind it
  char* out_ = nullptr;  // where it goes on
  std::string encoded_;
};

}  // namespace tobarine
