// zLog's binary log (.ZLO), read. See zlo_record.h for the record.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>

#include "zlog/zlo_record.h"
#include "zlog/zlog_reader.h"

namespace tobarine {

// Throws FileError when the file is no .ZLO: shorter than a record, of the newer form with longer
// records, or with a header that cannot be one and hardly a contact whose time can be one.
void refuse_foreign_zlo(const std::filesystem::path& path);

class ZloReader : public ZlogReader {
 public:
  explicit ZloReader(const std::filesystem::path& path);

  // Contacts with a time outside the accepted days are left out and reported; so is a last record
  // that is cut off. An unknown mode or band code leaves the text of the contact before; reported,
  // too.
  bool next(ZlogContact& contact, FindingLog& findings) override;
  std::size_t number() const override { return number_; }
  const InputFile& file() const override { return file_; }

 private:
  std::size_t read_record();
  void report_cut_off(std::size_t bytes, FindingLog& findings) const;
  void set_codes(ZlogContact& contact, FindingLog& findings);

  InputFile file_;
  std::string buffer_;     // many records at a time
  std::size_t taken_ = 0;  // bytes of the buffer
  zlo::Record record_{};
  std::size_t records_;     // the header included
  std::size_t number_ = 0;  // of the record last read, from 1
  std::string mode_;        // as the codes last gave them
  std::string band_;
};

}  // namespace tobarine
