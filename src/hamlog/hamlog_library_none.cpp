// Where Turbo HAMLOG's libraries cannot be: everywhere but on Windows.
#include "hamlog/hamlog_library.h"

namespace tobarine {

std::unique_ptr<HamlogLibrary> bind_hamlog_library(const std::filesystem::path& /*program_folder*/,
                                                   const std::filesystem::path& /*named_folder*/,
                                                   const std::filesystem::path& database) {
  throw FileError(database,
                  "Hamlog.hdb を読むには Turbo HAMLOG の Hamlog50.dll (Windows) が要ります。"
                  "ここでは Turbo HAMLOG で CSV に出力し、そのファイルを変換して下さい");
}

}  // namespace tobarine
