#include "app/controls.h"

#include <algorithm>

namespace tobarine {
namespace {

constexpr MenuEntry kMenus[] = {
    {"mnuFile_H2L", "[ ﾌｧｲﾙ H2L ]", ""},
    {"mnuHamlog", "Hamlog", "mnuFile_H2L"},
    {"mnuOpen_hdb", "開く *.hdb", "mnuHamlog"},
    {"mnuOpen_csv", "開く *.csv", "mnuHamlog"},
    {"mnuzLog", "zLog", "mnuFile_H2L"},
    {"mnuOpen_zlog_all", "開く all", "mnuzLog"},
    {"mnuOpen_zlog_zlo", "開く zLo", "mnuzLog"},
    {"mnuFile_L2H", "[ ﾌｧｲﾙ L2H ]", ""},
    {"mnuOpen_adi", "開く *.adi", "mnuFile_L2H"},
    {"mnuDisp", "[ 表示 ]", ""},
    {"mnuDisp_in", "入力ﾌｧｲﾙ", "mnuDisp"},
    {"mnuDisp_out", "出力ﾌｧｲﾙ", "mnuDisp"},
    {"mnuDisp_report", "変換の報告", "mnuDisp"},
    {"mnuClear", "[ 件数消去 ]", ""},
    {"mnuHelp", "[ 変換テーブルの説明 ]", ""},
    {"mnuEditHelp", "[ 編集方法説明 ]", ""},
    {"mnuTool", "[ Tool ]", ""},
    {"mnuGet_JCC_JCG", "JCC , JCG  , 区リスト", "mnuTool"},
    {"mnuJARL_Check", "JARL のリストの更新日付けの調査", "mnuGet_JCC_JCG"},
    {"mnuJARL_Download", "JARL よりJCC , JCG  , 区リストの取得", "mnuGet_JCC_JCG"},
    {"mnuMake_JCC_JCG", "JCC , JCG , 区リストの作成", "mnuGet_JCC_JCG"},
    {"adif2zlog_all", "ADIF to zLog ALL", "mnuTool"},
    {"mnuMake_dxcc_hl_dat", "dxcc_hl.dat の作成", "mnuTool"},
    {"mnuLearn_codes", "Hamlog の Code をログから登録", "mnuTool"},
    {"mnuHamlo_csv_Edit", "Hamlog.csv の編集", "mnuTool"},
};

}  // namespace

std::span<const MenuEntry> menu_entries() {
  return kMenus;
}

MainControls::MainControls() {
  cmdH2L.text = "変換　H -> L";
  cmdeqsl.text = " for ｅＱＳＬ";
  cmdL2H.text = "変換　L -> H";
  cmdEnd.text = "終　了";
  cmdOutput.text = "出力先…";
  cmdOutput.tip = "出力のファイルを選びます (別のログを開くまで)";
  cmdStop.text = "中止 (Esc)";
  cmdStop.enabled = false;
  cmdReport.colour = Colour::kLightBlue;
  cmdReport.visible = false;
  constexpr std::string_view kChecks[] = {
      "",
      "Ｒｍｋｓ １",
      "Ｒｍｋｓ ２",
      "時刻表示が ＪＳＴ",
      "Ｃｏｄｅ が ５００Ａ 以下",
      "Ｒｍｋｓ １",
      "Ｒｍｋｓ ２",
      "/ を含むｺｰﾙは転記を変更する。",
      " Ｈ -> Ｌ 変換時に半角の Ｎａｍｅ を転記する ",
      "転記する",
      "接頭語あり",
      "接頭語あり、無し",
      "システム日付より取得",
      "起動時に JCC JCG の更新日付けを調査する。",
      "P5/4Q4QQ 形式時の $DX を Comment に転記する",
      "エラーログは出力しない",
      "QTH を転記する",
  };
  static_assert(std::size(kChecks) == std::tuple_size_v<decltype(Check)>);
  for (std::size_t i = 0; i < Check.size(); ++i) Check[i].text = kChecks[i];
  Check[7].tip = "/ を含むｺｰﾙは転記を変更する。";
  const auto set = [](auto& controls, std::initializer_list<std::string_view> texts) {
    auto* control = controls.data();
    for (const std::string_view text : texts) (control++)->text = text;
  };
  set(Option1, {"変換なし", "全てJST", "全てUTC", "JＡ局はＪST"});
  Option1[1].tip = "UTC --> JST に変換します。";
  Option1[2].tip = "JST --> UTC に変換します。";
  Option1[3].tip = "JA 局は  UTC --> JST に変換します。";
  set(Option2, {"Ｒｍｋｓ １", "Ｒｍｋｓ ２", "不特定"});
  set(Option3, {"U T C", "J S T"});
  Command1.text = "記入欄の文字を消す";
  frameSelect.text = " 指定した Rmks のみ転記する ";
  frameLeaveOut.text = " Ｈ -> Ｌ 変換時に下記のデータは出力しない ";
  frameFullWidth.text = " Rmks に全角が含まれていても Comment に転記する ";
  frameWas.text = " ＷＡＳ 州名 , IOTA , CQ zone , ITU zone 関係 ";
  frameTime.text = " ＪＳＴ　， ＵＴＣ　変換 ";
  frameZlog.text = " ｚＬｏｇ　のデータの時刻は？ ";
  for (const MenuEntry& menu : kMenus) {
    if (menu.name == "mnuDisp") mnuDisp.text = menu.caption;
    if (menu.name == "mnuDisp_in") mnuDisp_in.text = menu.caption;
    if (menu.name == "mnuDisp_out") mnuDisp_out.text = menu.caption;
    if (menu.name == "mnuDisp_report") mnuDisp_report.text = menu.caption;
  }
  mnuDisp_report.enabled = false;
  lblSaving.visible = false;
  for (std::size_t i = 0; i < Toolbar1.size(); ++i) Toolbar1[i].text = kToolButtons[i].key;
}

Control& MainControls::tool(std::string_view key) {
  const auto* const found = std::ranges::find(kToolButtons, key, &ToolButton::key);
  return Toolbar1[static_cast<std::size_t>(found - kToolButtons.begin())];
}

}  // namespace tobarine
