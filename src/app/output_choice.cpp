#include "app/output_choice.h"

#include "hamlog/adif_writer.h"
#include "text/error.h"
#include "text/keep_rule.h"

namespace tobarine {
namespace {

enum Answer : std::size_t { kReplace, kOtherName };

}  // namespace

bool settle_outputs(Shell& shell,
                    const std::function<std::vector<std::filesystem::path>()>& outputs,
                    const std::function<bool()>& choose_other) {
  for (;;) {
    std::string names;
    for (const std::filesystem::path& output : outputs()) {
      if (is_kept(output, {is_own_adif, {}, {}})) names += "    " + path_text(output) + "\r\n";
    }
    if (names.empty()) return true;
    const auto answer =
        shell.ask({"Tobarine",
                   "出力と同じ名前のファイルがあります。\r\n\r\n" + names +
                       "\r\n置き換えても、今のファイルは日時の付いた .bak として隣に残ります。",
                   {"置き換える", "別の名前…"}});
    if (!answer) return false;
    if (*answer == kReplace) return true;
    if (!choose_other()) return false;
  }
}

}  // namespace tobarine
