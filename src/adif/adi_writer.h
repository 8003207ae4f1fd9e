// ADI, the ADIF standard's text form (version 3.1.6), written so that strict readers take it: a
// header, one record a line, fields in a fixed order, lengths in bytes of the file's encoding, only
// fields with a value, and only values that the standard allows.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "log/contact_stream.h"
#include "text/output_file.h"

namespace tobarine {

enum class AdiEncoding { kAscii, kUtf8, kCp932 };

class AdiWriter : public ContactSink {
 public:
  // The file stays the caller's, who closes it. `created`: "yyyymmdd hhmmss", UTC.
  AdiWriter(OutputFile& file, AdiEncoding encoding, std::string_view created);

  // Always true: whatever a contact holds has a place. BAND is added from FREQ, MODE and SUBMODE
  // become the standard's. A value that the standard does not allow for its field goes into
  // APP_TOBARINE_<field>, from where put_back() fetches it. Under kAscii full-width Latin letters
  // and the like become ASCII, and a field with other characters is left out and reported; under
  // kCp932 what cannot be encoded becomes "?".
  bool put(const Contact& contact, FindingLog& findings) override;
  void finish() override {}

 private:
  void put_field(std::string_view name, std::string_view value);
  void put_checked(Field field, std::string_view value, const Contact& contact,
                   FindingLog& findings);
  void put_mode(const Contact& contact, FindingLog& findings);
  void put_band(const Contact& contact, FindingLog& findings);
  void put_encodable(std::string_view name, std::string_view value, const Contact& contact,
                     FindingLog& findings);

  OutputFile& file_;
  AdiEncoding encoding_;
  std::string late_;  // the record's fields with other characters than ASCII
  std::string scratch_;
};

// Fields that an AdiWriter has put aside stand under their own names again.
void put_back(Contact& contact);

}  // namespace tobarine
