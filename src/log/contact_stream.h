// What every format's reader and writer is to the standard way: a source and a sink of contacts.
#pragma once

#include <cstdint>

#include "log/contact.h"
#include "rules/findings.h"

namespace tobarine {

// Hands out a log's contacts one at a time.
class ContactSource {
 public:
  virtual ~ContactSource() = default;

  // Clears and fills the contact, its origin's line included; false at the end. What cannot be read
  // as a contact is reported and passed over. Throws FileError, and RecordError for what ends the
  // reading.
  virtual bool next(Contact& contact, FindingLog& findings) = 0;

  // How far the reading is, in bytes or records.
  struct Done {
    std::uint64_t part;
    std::uint64_t whole;
  };
  virtual Done done() const = 0;
};

// Takes contacts one at a time and writes them as they come.
class ContactSink {
 public:
  virtual ~ContactSink() = default;

  // False: the format cannot hold the contact; why is in the findings, as is every field that it
  // holds only in part or not at all. Throws FileError.
  virtual bool put(const Contact& contact, FindingLog& findings) = 0;

  // Writes what the format has behind its last contact. Throws FileError.
  virtual void finish() = 0;
};

}  // namespace tobarine
