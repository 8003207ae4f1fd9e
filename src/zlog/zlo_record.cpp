#include "zlog/zlo_record.h"

#include <algorithm>
#include <cmath>

namespace tobarine::zlo {
namespace {

std::uint64_t read_number(Bytes record, std::size_t at, std::size_t bytes) {
  std::uint64_t value = 0;
  for (std::size_t i = bytes; i > 0; --i) value = value << 8 | record[at + i - 1];
  return value;
}

void write_number(Buffer record, std::size_t at, std::size_t bytes, std::uint64_t value) {
  for (std::size_t i = 0; i < bytes; ++i, value >>= 8) {
    record[at + i] = static_cast<unsigned char>(value);
  }
}

}  // namespace

std::size_t record_count(std::uint64_t file_size) {
  return static_cast<std::size_t>(std::nearbyint(static_cast<double>(file_size) / kRecordSize));
}

std::optional<unsigned char> stored_byte(unsigned number) {
  unsigned result = 0;
  for (unsigned rest = number, decade = 1; rest > 0; rest /= 16, decade *= 10) {
    if (rest % 16 > 9) return std::nullopt;
    result += rest % 16 * decade;
    if (result > 255) return std::nullopt;
  }
  return static_cast<unsigned char>(result);
}

std::string_view text_bytes(Bytes record, Area area) {
  const auto* const text = reinterpret_cast<const char*>(record.data()) + area.length_at + 1;
  return {text, std::min<std::size_t>(record[area.length_at], area.size)};
}

unsigned read_16(Bytes record, std::size_t at) {
  return static_cast<unsigned>(read_number(record, at, 2));
}
void write_16(Buffer record, std::size_t at, unsigned value) {
  write_number(record, at, 2, value);
}
std::uint32_t read_32(Bytes record, std::size_t at) {
  return static_cast<std::uint32_t>(read_number(record, at, 4));
}
void write_32(Buffer record, std::size_t at, std::uint32_t value) {
  write_number(record, at, 4, value);
}
std::uint64_t read_64(Bytes record, std::size_t at) {
  return read_number(record, at, 8);
}
void write_64(Buffer record, std::size_t at, std::uint64_t value) {
  write_number(record, at, 8, value);
}

}  // namespace tobarine::zlo
