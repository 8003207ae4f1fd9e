#include "cli/options.h"

#include <CLI/CLI.hpp>
#include <iostream>

#include "cli/completion.h"
#include "cli/japanese.h"
#include "cli/man_page.h"
#include "convert/adif_reading.h"
#include "reference/http.h"
#include "rules/time_shift.h"
#include "rules/version.h"
#include "text/error.h"
#include "text/strings.h"

namespace tobarine {
namespace {

constexpr const char* kHelp = "この説明を表示する";

class Parser {
 public:
  Parser() {
    speak_japanese(app_);
    app_.require_subcommand(1);
    app_.fallthrough();
    app_.set_version_flag("--version", "Tobarine " + std::string(kVersion), "版を表示する");
    app_.set_help_flag("-h,--help", kHelp);
    add_path(&app_, "--home", o_.home, "プログラムフォルダー (環境変数 TOBARINE_HOME でも可)");
    app_.add_option("--set", o_.set, "この実行だけの設定 (何度でも可、名前と値の一覧は settings)")
        ->option_text("名前=値")
        ->take_all()
        ->expected(1)
        ->allow_extra_args(false);  // the next word is no second value
    add_path(&app_, "--trace", o_.trace, "トレースログを書くファイル");
    app_.add_flag("--report", o_.report, "変換の報告も表示する");
    app_.add_flag("--json", o_.json, "結果と報告を JSON で表示する");
    app_.add_flag("--quiet", o_.quiet, "何も表示しない (エラーを除く)");
    add_made("--man", man_page);
    add_made("--completion", bash_completion);
    examples(&app_, {"h2l Hamlog.csv", "h2l --help"});
    add_conversion("h2l", "Hamlog の CSV や zLog のログを Logger32 の ADIF に変換する",
                   Command::kH2l,
                   {"h2l Hamlog.csv -o logger32.adi", "--set Chk_9=1 --report h2l Hamlog.csv",
                    "--set Op_3=1 h2l contest.all    # 時刻が JST のログ"});
    add_conversion("eqsl", "Hamlog の CSV や zLog のログを eQSL.cc の ADIF に変換する",
                   Command::kEqsl,
                   {"eqsl Hamlog.csv -o eqsl.adi", "--set Chk_7=1 eqsl contest.zlo"});
    CLI::App* l2h =
        add(&app_, "l2h", "Logger32 や N1MM の ADIF を Hamlog の CSV に変換する", Command::kL2h);
    add_path(l2h, "INPUT", o_.input, "入力ファイル (- は標準入力)")->required();
    add_path(l2h, "-o,--output", o_.output,
             "出力ファイル (無ければ入力と同じ所の .csv、- は標準出力)");
    l2h->add_option("--time", o_.time,
                    "時刻の変換: none 変換なし、jst 全てJST、utc 全てUTC、"
                    "ja JA局はJST")
        ->check(CLI::IsMember({"none", "jst", "utc", "ja"}));
    add_reading(l2h);
    examples(l2h, {"l2h logger32.adi -o hamlog.csv", "l2h n1mm.adi --time jst"});
    CLI::App* zlog =
        add(&app_, "adif2zlog", "N1MM などの ADIF を zLog の .all、.zlo と CSV に変換する",
            Command::kAdifToZlog);
    add_path(zlog, "INPUT", o_.input, "入力ファイル (- は標準入力)")->required();
    add_path(zlog, "-o,--output", o_.output,
             "出力 BASE.all、BASE.zlo、BASE.csv の BASE (無ければ入力と同じ所)");
    add_reading(zlog);
    examples(zlog, {"adif2zlog n1mm.adi -o contest",
                    "--set utc_jst_str=ALL_J --set TX_NR_001=1 adif2zlog n1mm.adi"});
    CLI::App* info = add(&app_, "info", "ファイルの種類と件数を表示する", Command::kInfo);
    add_path(info, "INPUT", o_.input, "ログのファイル (- は標準入力)")->required();
    examples(info, {"info contest.zlo", "--json info Hamlog.csv"});
    examples(add(&app_, "settings", "--set の設定の名前、今の値、使える値を表示する",
                 Command::kSettings),
             {"settings", "--json settings"});
    add_lookups();
    add_builders();
    add_jarl();
  }

  ParsedOptions parse(const std::vector<std::string>& arguments) {
    std::vector<const char*> argv;
    argv.reserve(arguments.size());
    for (const std::string& argument : arguments) argv.push_back(argument.c_str());
    try {
      app_.parse(static_cast<int>(argv.size()), argv.data());
    } catch (const CLI::ParseError& error) {
      if (error.get_exit_code() != 0) throw UsageError(usage_message(app_, error));
      return {o_, app_.exit(error, std::cout, std::cerr)};  // --help and the like
    }
    o_.called_as = path_from_text(arguments.front());
    return {o_, -1};
  }

 private:
  // What those who make packages want.
  void add_made(const char* name, std::string (*make)(const CLI::App&)) {
    const auto print = [this, make] {
      std::cout << make(app_);
      throw CLI::Success();
    };
    app_.add_flag_callback(name, print)->group("");
  }

  CLI::App* add_group(const char* name, const char* help) {
    CLI::App* group = app_.add_subcommand(name, help);
    group->require_subcommand(1);
    return as_ours(group);
  }

  // CLI11 gives a command its own words for these.
  static CLI::App* as_ours(CLI::App* command) {
    command->group("コマンド");
    command->set_help_flag("-h,--help", kHelp);
    return command->fallthrough();
  }

  CLI::App* add(CLI::App* parent, const char* name, const char* help, Command command) {
    CLI::App* sub = as_ours(parent->add_subcommand(name, help));
    sub->callback([this, command] { o_.command = command; });
    return sub;
  }

  static CLI::Option* add_path(CLI::App* app, const char* name, std::filesystem::path& path,
                               const char* help) {
    return app->add_option_function<std::string>(
        name, [&path](const std::string& text) { path = path_from_text(text); }, help);
  }

  // What --help ends with.
  static void examples(CLI::App* app, std::initializer_list<std::string_view> lines) {
    std::string text = "例:";
    for (const std::string_view line : lines) text.append("\n  tobarine-cli ").append(line);
    app->footer(text);
  }

  void add_conversion(const char* name, const char* help, Command command,
                      std::initializer_list<std::string_view> lines) {
    CLI::App* sub = add(&app_, name, help, command);
    add_path(sub, "INPUT", o_.input, "入力ファイル (- は標準入力)")->required();
    add_path(sub, "-o,--output", o_.output,
             "出力ファイル (無ければ入力と同じ所の .adi、- は標準出力)");
    sub->add_option("--kind", o_.kind,
                    "入力の種類: csv、hdb、z_all、z_zlo (無ければ名前と一行目から判断)")
        ->check(CLI::IsMember({"csv", "hdb", "z_all", "z_zlo"}));
    add_path(sub, "--keep-intermediate", o_.keep_intermediate,
             "zLog のログの中間ファイル (zlog_1.csv) を残す所");
    examples(sub, lines);
  }

  void add_reading(CLI::App* app) {
    std::string help = "ADIF の読み方:";
    std::vector<std::string> words;
    for (const AdifReadingName& name : adif_readings()) {
      help.append(words.empty() ? " " : "、").append(name.word).append(" ").append(name.label);
      words.emplace_back(name.word);
    }
    app->add_option("--reading", o_.reading,
                    help + " (無ければ、従来の読み方で交信が失われる時は変換しない)")
        ->check(CLI::IsMember(words));
  }

  void add_lookups() {
    CLI::App* lookup = add_group("lookup", "表を引く (項目が無ければ標準入力から)");
    CLI::App* calls = add(lookup, "calls",
                          "コールサインの DXCC エンティティ: コール、"
                          "プリフィックス、DXCC 番号、QTH",
                          Command::kLookupCalls);
    calls->add_option("ITEM", o_.items, "コールサイン");
    calls->add_option("--date", o_.date, "交信日 yyyymmdd (期間付きの修正表のため)")
        ->check([](const std::string& day) {
          return is_date_and_time(day, "0000") ? ""
                                               : day + " は日付として使えません (例: 20241231)";
        });
    examples(calls, {"lookup calls JA1ABC W1AW/KH6", "--json lookup calls <calls.txt"});
    CLI::App* codes =
        add(lookup, "codes", "Hamlog の Code の DXCC 番号 (不明なら 0)", Command::kLookupCodes);
    codes->add_option("ITEM", o_.items, "Code");
    examples(codes, {"lookup codes 500A"});
    CLI::App* jcc = add(lookup, "jcc", "JCC、JCG、区の番号: 番号、Code、地名 (不明なら空)",
                        Command::kLookupJcc);
    jcc->add_option("ITEM", o_.items, "番号");
    examples(jcc, {"lookup jcc 11007 110101"});
    examples(lookup, {"lookup calls JA1ABC", "lookup codes 500A", "lookup jcc 11007"});
  }

  void add_builders() {
    CLI::App* build = add_group("build", "参照ファイルを作る");
    CLI::App* dxcc = add(build, "dxcc", "cty.dat から dxcc_hl.dat を作る", Command::kBuildDxcc);
    add_path(dxcc, "CTY.DAT", o_.input, "cty.dat")->required();
    add_path(dxcc, "-o,--output", o_.output, "出力 (無ければプログラムフォルダー)");
    add_force(dxcc);
    examples(dxcc, {"build dxcc cty.dat"});
    CLI::App* jcc =
        add(build, "jcc", "JARL の三つのリストから JCC_JCG.mas を作る", Command::kBuildJcc);
    add_path(jcc, "--from", o_.input,
             "jcc-list.txt、jcg-list.txt、ku-list.txt のあるフォルダー "
             "(無ければプログラムフォルダー)");
    add_path(jcc, "-o,--output", o_.output, "出力 (無ければプログラムフォルダー)");
    add_force(jcc);
    examples(jcc, {"build jcc", "build jcc --from lists -o JCC_JCG.mas"});
    CLI::App* codes =
        add(build, "codes", "Hamlog の Code をログから登録する (h2l_cty.mas と l2h_cty.mas に)",
            Command::kBuildCodes);
    add_path(codes, "HAMLOG.csv", o_.input, "Hamlog の CSV")->required();
    examples(codes, {"build codes Hamlog.csv"});
    examples(build, {"build dxcc cty.dat", "build jcc", "build codes Hamlog.csv"});
  }

  void add_force(CLI::App* build) {
    build->add_flag("--force", o_.force, "大きく減るときや、リストが揃っていないときも書き換える");
  }

  void add_timeout(CLI::App* app) {
    app->add_option("--timeout", o_.timeout,
                    "待つ秒数 (1 から " + std::to_string(kLongestWait) + "、無ければ 60)")
        ->check([](const std::string& text) {
          const double seconds = leading_number(text);
          const bool fits = all_digits(text) && seconds >= 1 && seconds <= kLongestWait;
          return fits ? std::string()
                      : "1 から " + std::to_string(kLongestWait) + " の秒数を書いて下さい: " + text;
        });
  }

  void add_jarl() {
    CLI::App* jarl = add_group("jarl", "JARL の JCC、JCG、区のリスト");
    jarl->add_option("--url", o_.url, "リストのある場所 (無ければ JARL)");
    add_timeout(jarl);
    examples(jarl, {"jarl check", "jarl download && tobarine-cli build jcc"});
    examples(add(jarl, "check", "新しいリストがあるか調べる", Command::kJarlCheck),
             {"jarl check", "jarl --timeout 120 check"});
    examples(
        add(jarl, "download", "リストをプログラムフォルダーに取り込む", Command::kJarlDownload),
        {"jarl download"});
  }

  CliOptions o_;
  CLI::App app_{"Tobarine: アマチュア無線のログを変換する", "tobarine-cli"};
};

}  // namespace

ParsedOptions parse_options(const std::vector<std::string>& arguments) {
  return Parser().parse(arguments);
}

}  // namespace tobarine
