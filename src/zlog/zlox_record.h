// The record of today's zLog: 384 bytes in a .ZLOX, of which a .ZLO has the first 256. See
// zlo_record.h for what both forms and all versions share. The first record is a header: a .ZLOX
// begins with "ZLOX" and the number of contacts.
//
// Against the older meaning of a .ZLO: the codes 5 to 7 are FT4, FT8 and Other, numbers are plain
// bytes, the lengths of texts are their bytes, and all of their areas counts.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

#include "zlog/zlo_record.h"
#include "zlog/zlog_qso.h"

namespace tobarine::zlox {

inline constexpr std::size_t kRecordSize = 384;
using Record = std::array<unsigned char, kRecordSize>;

inline constexpr zlo::Area kSentNumber{21, 30};
inline constexpr zlo::Area kReceivedNumber{52, 30};
inline constexpr zlo::Area kMultiplier2{126, 30};
inline constexpr zlo::Area kMemo{175, 64};
inline constexpr zlo::Area kFreq{256, 10};  // kHz, with a point: "1800.0"
inline constexpr zlo::Area kPcName{268, 10};

inline constexpr std::size_t kContacts = 4;  // of the header: 32 bits
inline constexpr std::size_t kPower = 94;
inline constexpr std::size_t kCq = 240;
inline constexpr std::size_t kDupe = 241;
inline constexpr std::size_t kReserve = 242;
inline constexpr std::size_t kPower2 = 244;  // 32 bits, as the next two
inline constexpr std::size_t kReserve2 = 248;
inline constexpr std::size_t kReserve3 = 252;
inline constexpr std::size_t kQsyViolation = 267;
inline constexpr std::size_t kForced = 279;
inline constexpr std::size_t kQslWish = 280;
inline constexpr std::size_t kInvalid = 281;
inline constexpr std::size_t kVerified = 282;

// The codes are the indexes.
inline constexpr std::array<std::string_view, 8> kModes = {"CW",   "SSB", "FM",  "AM",
                                                           "RTTY", "FT4", "FT8", "Other"};
inline constexpr std::array<std::string_view, 4> kPowers = {"P", "L", "M", "H"};

// Fills the contact from a record of either form. A .ZLO has no place for the frequency: it is what
// the memo says. Returns the number of invalid bytes in its texts.
std::size_t decode(zlo::Bytes record, Zone zone, ZlogQso& qso);

// What a record could not hold of a contact.
struct Loss {
  std::string cut;          // fields, in words
  std::size_t lacking = 0;  // characters that CP932 lacks, written as "?"
};

// Builds the record, either form, of a contact that has a moment and a band of zlo::kBands; a mode
// that has no code becomes "Other", which is the caller's to report.
Loss encode(const ZlogQso& qso, Zone zone, zlo::Buffer record);

// The header of either form; in a .ZLOX `contacts` follows its magic.
Loss encode_header(const ZlogHead& head, std::uint32_t contacts, zlo::Buffer record);

}  // namespace tobarine::zlox
