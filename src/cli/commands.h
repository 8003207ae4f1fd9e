// The commands of tobarine-cli. Each writes its result to standard output, throws the failures of
// text/error.h, and returns the exit status: 0 done, 1 the run failed after a part was done.
#pragma once

#include "cli/options.h"
#include "cli/session.h"

namespace tobarine {

// Runs the command that the options name.
int run_command(const CliOptions& options);

int convert_h2l(Session& session);  // also eqsl
int convert_l2h(Session& session);
int convert_adif_to_zlog(Session& session);
int show_info(Session& session);
int show_settings(Session& session);
int lookup_calls(Session& session);
int lookup_codes(Session& session);
int lookup_jcc(Session& session);
int build_dxcc(Session& session);
int build_jcc_master(Session& session);
int build_codes(Session& session);
int check_jarl(Session& session);
int download_jarl(Session& session);

}  // namespace tobarine
