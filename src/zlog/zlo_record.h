// The record of zLog's binary log (.ZLO): 256 bytes, little-endian, texts with a length byte in
// front and in CP932. The first record of a file is a header and no contact.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace tobarine::zlo {

inline constexpr std::size_t kRecordSize = 256;
using Record = std::array<unsigned char, kRecordSize>;

// A text: its length byte, then its area.
struct Area {
  std::size_t length_at;
  std::size_t size;  // bytes of the area behind
};
inline constexpr Area kCall{8, 12};
inline constexpr Area kSentNumber{21, 8};      // of 30 bytes the rest is not used
inline constexpr Area kReceivedNumber{52, 9};  // of 31 bytes the rest is not used
inline constexpr Area kMultiplier1{95, 30};
inline constexpr Area kOperator{160, 14};
inline constexpr Area kMemo{175, 67};
inline constexpr Area kContestName{175, 60};  // of the header

// Offsets of the other fields.
inline constexpr std::size_t kTime = 0;      // double: days since 1899-12-30
inline constexpr std::size_t kRstSent = 84;  // 16 bits
inline constexpr std::size_t kZone = 84;     // of the header: 16 bits, the zone of all times
inline constexpr std::size_t kRstReceived = 86;
inline constexpr std::size_t kSerial = 88;  // 16 bits of the serial number
inline constexpr std::size_t kMode = 92;
inline constexpr std::size_t kBand = 93;
inline constexpr std::size_t kNewMultiplier1 = 157;
inline constexpr std::size_t kNewMultiplier2 = 158;
inline constexpr std::size_t kPoints = 159;
inline constexpr std::size_t kTxNumber = 243;

// What the header's zone says. Any other value says nothing for certain.
inline constexpr unsigned kZoneUtc = 0x7FFF;
inline constexpr unsigned kZoneJst = 0x10000 - 540;  // minutes

// What the newer form of 384 bytes a record begins with.
inline constexpr std::string_view kZloxMagic = "ZLOX";

// Days that the Time field can hold here; other days are left out on reading. The years 1989/09/17
// to 2079/06/04.
inline constexpr double kFirstDay = 32768;
inline constexpr double kDayAfterLast = 65536;
inline constexpr std::string_view kFirstDate = "1989/09/17";
inline constexpr std::string_view kLastDate = "2079/06/04";

// Texts of the mode and band codes; the code is the index. Mode 4 is "RTY" in text logs and is read
// as that from a record, too.
inline constexpr std::array<std::string_view, 6> kModes = {"CW", "SSB",  "FM",
                                                           "AM", "RTTY", "Other"};
// The codes that follow: newer versions write them, and here they are unknown.
inline constexpr std::array<std::string_view, 2> kNewerModes = {"FT8", "Other"};
inline constexpr std::size_t kModeRtty = 4;
inline constexpr std::string_view kRttyInTextLogs = "RTY";

inline constexpr std::array<std::string_view, 16> kBands = {
    "1.9", "3.5", "7",   "10",  "14",   "18",   "21",   "24",
    "28",  "50",  "144", "430", "1200", "2400", "5600", "10G"};

// The number of records of a file, the header included; half a record or more counts as one (an
// exact half when that makes the number even).
std::size_t record_count(std::uint64_t file_size);

// What a byte field holds for a number: its hexadecimal form read as a decimal number (16 gives
// 10). Nothing when that form holds a letter or names more than a byte can hold.
std::optional<unsigned char> stored_byte(unsigned number);

// Records, and those of the newer form, which are longer.
using Bytes = std::span<const unsigned char>;
using Buffer = std::span<unsigned char>;

// The text's bytes: as many as its length byte says, at most its area.
std::string_view text_bytes(Bytes record, Area area);

// Numbers of the record's own byte order.
unsigned read_16(Bytes record, std::size_t at);
void write_16(Buffer record, std::size_t at, unsigned value);
std::uint32_t read_32(Bytes record, std::size_t at);
void write_32(Buffer record, std::size_t at, std::uint32_t value);
std::uint64_t read_64(Bytes record, std::size_t at);
void write_64(Buffer record, std::size_t at, std::uint64_t value);

}  // namespace tobarine::zlo
