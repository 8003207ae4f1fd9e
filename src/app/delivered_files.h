// The files as delivered, and the user's own folder that was made from them. What he has not
// changed there follows what is delivered; what he has changed stays, and he is told of the newer
// one.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace tobarine {

// Keeps the checksums of what was delivered last, in the user's folder: a line each, the file's
// name and its checksum in hexadecimal digits.
inline constexpr std::string_view kDeliveryRecord = "delivered.lst";

// Tells two versions of a file apart (64-bit FNV-1a).
std::uint64_t checksum(std::string_view bytes);

// Fills an empty folder with copies and their record: of the files that are data by their names'
// endings (.dat, .ini, .mas, .txt). Throws FileError.
void copy_delivered_files(const std::filesystem::path& delivered,
                          const std::filesystem::path& folder);

struct DeliveryNews {
  std::vector<std::string> added;    // were missing
  std::vector<std::string> renewed;  // were as delivered before
  std::vector<std::string> kept;     // a newer one is delivered, but the user has changed his
  std::vector<std::string> failed;   // why one could not be brought in
};

// Brings what was delivered since the last time into the user's folder; each file is whole or as it
// was. Kept files are named once, and again with `told` false until they are. Never throws.
DeliveryNews bring_in_deliveries(const std::filesystem::path& delivered,
                                 const std::filesystem::path& folder, bool told);

// What the user should know, lines ended by LF; empty when there is nothing.
std::string delivery_text(const DeliveryNews& news, const std::filesystem::path& delivered,
                          const std::filesystem::path& folder);

}  // namespace tobarine
