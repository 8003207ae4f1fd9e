// One contact of any log: the document in the middle between every format's reader and every
// format's writer. Its fields have ADIF's names and forms (times are UTC, frequencies MHz); what a
// log says beyond them stays under the name it came with.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "log/field.h"
#include "rules/moment.h"

namespace tobarine {

// Where a contact came from.
struct Origin {
  std::size_t file = 0;  // which of the inputs, from 0
  std::size_t line = 0;  // line of a text, record of a binary log, from 1
};

// Values are UTF-8 and never empty: a field without a value is not there. A contact keeps its
// memory when it is cleared, so that one instance serves a whole log. Views into it are valid until
// it changes.
class Contact {
 public:
  struct Entry {
    Field field;  // kOther: only the name tells
    std::string_view name;
    std::string_view value;
  };

  void clear();

  std::size_t size() const { return entries_.size(); }
  Entry operator[](std::size_t index) const;  // in the order in which they were set first

  // The value; empty when there is none.
  std::string_view get(Field field) const;
  std::string_view get(std::string_view name) const;  // any case
  bool has(Field field) const { return !get(field).empty(); }

  // Sets or replaces a value; an empty one takes the field away. The value may be a view into this
  // contact.
  void set(Field field, std::string_view value);
  void set(std::string_view name, std::string_view value);
  void remove(Field field) { set(field, {}); }

  // QSO_DATE and TIME_ON as one moment; nothing when they are no day and time. A contact without
  // TIME_ON has a moment of the day's precision.
  std::optional<Moment> moment() const;
  void set_moment(const Moment& moment);  // also remembers the zone that the log stated

  // The zone in which the source gave its times; UTC unless set_moment() said otherwise.
  Zone stated_zone() const { return stated_zone_; }

  std::optional<unsigned> dxcc() const;  // the entity's number

  Origin origin;

 private:
  struct Place {
    Field field;
    std::uint32_t name;  // where it begins in text_; kOther only
    std::uint32_t name_size;
    std::uint32_t value;
    std::uint32_t value_size;
  };
  std::string_view name_of(const Place& place) const;
  std::string_view value_of(const Place& place) const;
  std::vector<Place>::const_iterator find(Field field, std::string_view name) const;
  void set(Field field, std::string_view name, std::string_view value);

  std::vector<Place> entries_;
  std::string text_;  // names that are not the standard's, and values, in the order of setting
  Zone stated_zone_ = Zone::kUtc;
};

}  // namespace tobarine
