#include "cli/commands.h"

namespace tobarine {

int run_command(const CliOptions& options) {
  Session session(options);
  switch (options.command) {
    case Command::kH2l:
    case Command::kEqsl:
      return convert_h2l(session);
    case Command::kL2h:
      return convert_l2h(session);
    case Command::kAdifToZlog:
      return convert_adif_to_zlog(session);
    case Command::kInfo:
      return show_info(session);
    case Command::kSettings:
      return show_settings(session);
    case Command::kLookupCalls:
      return lookup_calls(session);
    case Command::kLookupCodes:
      return lookup_codes(session);
    case Command::kLookupJcc:
      return lookup_jcc(session);
    case Command::kBuildDxcc:
      return build_dxcc(session);
    case Command::kBuildJcc:
      return build_jcc_master(session);
    case Command::kBuildCodes:
      return build_codes(session);
    case Command::kJarlCheck:
      return check_jarl(session);
    case Command::kJarlDownload:
      return download_jarl(session);
  }
  return 2;
}

}  // namespace tobarine
