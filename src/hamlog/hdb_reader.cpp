#include "hamlog/hdb_reader.h"

#include <cstring>
#include <string_view>
#include <utility>

#include "text/cp932.h"
#include "text/error.h"

namespace tobarine {
namespace {

bool succeeded(int status) {
  return status == 0 || status == 1;
}

void check(int status, const std::filesystem::path& database) {
  if (!succeeded(status)) {
    throw FileError(database,
                    "Hamlog のデータベースとして開けません (" + hamlog_status_text(status) + ")");
  }
}

// The path as the libraries take it.
std::string library_path(const std::filesystem::path& database) {
  std::string path;
  if (encode_cp932(path_text(database), path) > 0) {
    throw FileError(database, "Hamlog のライブラリーが扱えない文字がパスにあります");
  }
  return path;
}

}  // namespace

std::string hamlog_status_text(int status) {
  constexpr struct {
    int status;
    std::string_view meaning;
  } kMeanings[] = {{5, "開けない"},
                   {7, "読めない"},
                   {10, "ファイルの終わり"},
                   {21, "読めない"},
                   {24, "データに矛盾がある"}};
  std::string text = "状態 " + std::to_string(status);
  for (const auto& known : kMeanings) {
    if (known.status == status) text.append(": ").append(known.meaning);
  }
  return text;
}

std::size_t count_hamlog_hdb(const std::filesystem::path& database, HamlogLibrary& library) {
  const std::string path = library_path(database);
  std::vector<char> handle(kHamlogHandleSize);
  check(library.dbf_open(path.c_str(), handle.data()), database);
  const int count = library.dbf_rcount(handle.data());
  library.dbf_close(handle.data());
  return count < 0 ? 0 : static_cast<std::size_t>(count);
}

HdbReader::HdbReader(std::filesystem::path database, HamlogLibrary& library)
    : database_(std::move(database)),
      library_(library),
      handle_(kHamlogHandleSize),
      count_(count_hamlog_hdb(database_, library_)) {
  check(library_.HamlogOpen(0, handle_.data(), library_path(database_).c_str(), 0), database_);
}

HdbReader::~HdbReader() {
  library_.HamlogClose(handle_.data());
}

bool HdbReader::next(QsoRecord& record, FindingLog& findings) {
  constexpr int kReadMode = 2;
  constexpr int kMostFailures = 3;
  for (int failures = 0; number_ < count_;) {
    ++number_;
    const int status = library_.THW_read(handle_.data(), static_cast<int>(number_), kReadMode);
    if (!succeeded(status)) {
      findings.add(FindingKind::kUnreadRecord, number_, "", hamlog_status_text(status));
      if (++failures < kMostFailures) continue;
      throw RecordError(
          database_, number_,
          "続けて読めません (" + hamlog_status_text(status) + ")。ここで変換を中止しました");
    }
    std::size_t invalid_bytes = 0;
    std::array<std::string_view, kFields> columns;
    for (std::size_t i = 0; i < kFields; ++i) {
      std::array<char, kHamlogTextSize + 1> text{};  // one NUL more than the library may fill
      library_.ThwString(text.data(), handle_.data(), static_cast<int>(i) + 1);
      fields_[i].clear();
      invalid_bytes += decode_cp932({text.data(), std::strlen(text.data())}, fields_[i]);
      columns[i] = fields_[i];
    }
    fill_record(columns, record);
    if (invalid_bytes > 0) {
      findings.add(FindingKind::kInvalidByte, number_, record.call,
                   std::to_string(invalid_bytes) + " バイト");
    }
    return true;
  }
  return false;
}

}  // namespace tobarine
