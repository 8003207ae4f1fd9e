#include "cli/man_page.h"

#include "app/option_table.h"
#include "rules/version.h"
#include "text/strings.h"

namespace tobarine {
namespace {

// Text as roff prints it unchanged.
std::string plain(std::string text) {
  replace_all(text, "\\", "\\e");
  replace_all(text, "-", "\\-");
  replace_all(text, "\n.", "\n\\&.");
  return text;
}

void options_of(const CLI::App& app, std::string& page) {
  for (const CLI::Option* option : app.get_options()) {
    const bool hidden = option->get_group().empty();
    if (hidden || option->check_lname("help")) continue;
    const bool takes_value = option->get_items_expected_max() > 0 && !option->get_positional();
    page += ".TP\n.B " + plain(option->get_name(false, true)) + (takes_value ? " …" : "") + '\n' +
            plain(option->get_description()) + '\n';
  }
}

void settings(std::string& page) {
  for (const Option& option : option_table()) {
    page += ".TP\n.B " + plain(std::string(option.name)) + " (" + std::string(option.key) + ")\n" +
            plain(std::string(option.meaning)) + "。\n.br\n" + plain(allowed_values(option)) + '\n';
  }
}

void command(const CLI::App& app, const std::string& name, std::string& page) {
  const auto commands = app.get_subcommands([](const CLI::App*) { return true; });
  page += ".SS " + plain(name) + '\n' + plain(app.get_description()) + '\n';
  options_of(app, page);
  if (!app.get_footer().empty()) page += ".PP\n.nf\n" + plain(app.get_footer()) + "\n.fi\n";
  for (const CLI::App* sub : commands) command(*sub, name + " " + sub->get_name(), page);
}

constexpr std::string_view kBegin = R"(" "ユーザーコマンド"
.ad l
.SH 名前
tobarine\-cli, tobarine \- アマチュア無線のログを変換する
.SH 書式
.B tobarine
.RI [ ログ ]
.br
.B tobarine\-cli
.RI [ オプション ]... " コマンド" ...
.SH 説明
.B tobarine
は窓を開きます (ログを付ければそれも)。
.B tobarine\-cli
は窓でできることをコマンドで行います。入力のファイルには決して書き込みません。
.SH オプション
どのコマンドにも使えます。
)";

constexpr std::string_view kEnd = R"(.SH ファイル
.TP
.I ~/.local/share/tobarine
御自分のプログラムフォルダーです。窓を初めて開いた時に
.I /usr/share/tobarine
から作られ、設定 (Tobarine.ini)、表、参照ファイルが入ります。
.SH 終了コード
0 成功、1 失敗、2 使い方の間違い。
.SH 関連項目
.I /usr/share/doc/tobarine/manual.ja.md
)";

}  // namespace

std::string man_page(const CLI::App& app) {
  std::string page = R"(.TH TOBARINE\-CLI 1 "" "Tobarine )" + std::string(kVersion);
  page += kBegin;
  options_of(app, page);
  page += ".SH コマンド\n";
  for (const CLI::App* sub : app.get_subcommands([](const CLI::App*) { return true; })) {
    command(*sub, sub->get_name(), page);
  }
  page +=
      ".SH 設定\nどれも\n.B \\-\\-set\n名前=値 でその実行だけ変えられます。"
      "名前の代わりに括弧の中の Tobarine.ini のキーも使えます。\n";
  settings(page);
  return page.append(kEnd);
}

}  // namespace tobarine
