#include "convert/reference_tables.h"

#include "text/folder.h"

namespace tobarine {

void ConversionTables::load(const std::filesystem::path& folder) {
  bands.load(file_in(folder, "Band_tbl.ini"));
  modes.load(file_in(folder, "Mode_tbl.ini"));
}

void CallTables::load(const std::filesystem::path& folder) {
  calls.load(folder);
  load_codes(folder);
}

void CallTables::load_codes(const std::filesystem::path& folder) {
  codes.load(file_in(folder, "h2l_cty.mas"));
}

void PlaceTables::load(const std::filesystem::path& folder) {
  codes.load(file_in(folder, "l2h_cty.mas"));
  jcc.load(file_in(folder, "JCC_JCG.mas"));
}

}  // namespace tobarine
