#include "app/window_arguments.h"

#include "rules/version.h"
#include "text/error.h"
#include "text/printable.h"

namespace tobarine {
namespace {

constexpr std::string_view kHelp =
    "Tobarine: アマチュア無線のログを変換する\n"
    "使い方: tobarine [オプション] [ログ]\n"
    "\n"
    "  ログ          窓を開いて読み込むログのファイル\n"
    "  --home 場所   プログラムフォルダー (環境変数 TOBARINE_HOME でも可)\n"
    "  --version     版を表示する\n"
    "  -h, --help    この説明を表示する\n"
    "\n"
    "窓を開かずに変換するには: tobarine-cli --help\n";

constexpr std::string_view kHome = "--home";

}  // namespace

WindowArguments parse_window_arguments(const std::vector<std::string>& arguments) {
  WindowArguments parsed;
  const auto refuse = [&parsed](const std::string& problem) {
    if (parsed.problem.empty()) {
      parsed.problem = "tobarine: " + printable(problem) + "。使い方: tobarine --help";
    }
  };
  bool only_names = false;  // behind "--"
  for (std::size_t i = 1; i < arguments.size(); ++i) {
    const std::string& word = arguments[i];
    if (only_names || !word.starts_with('-')) {
      if (!parsed.log.empty()) refuse("開けるログは一つです: " + word);
      parsed.log = path_from_text(word);
    } else if (word == "--") {
      only_names = true;
    } else if (word == "-h" || word == "--help") {
      parsed.answer = kHelp;
    } else if (word == "--version") {
      parsed.answer = "Tobarine " + std::string(kVersion) + "\n";
    } else if (word == kHome && i + 1 < arguments.size()) {
      parsed.home = path_from_text(arguments[++i]);
    } else if (word.starts_with("--home=") && word.size() > kHome.size() + 1) {
      parsed.home = path_from_text(std::string_view(word).substr(kHome.size() + 1));
    } else {
      const bool no_value = word == kHome || word == "--home=";
      refuse(no_value ? "--home の後に場所を書いて下さい" : "オプション " + word + " はありません");
    }
  }
  return parsed;
}

}  // namespace tobarine
