#include "rules/finding_advice.h"

#include <algorithm>
#include <iterator>

namespace tobarine {
namespace {

struct Advice {
  FindingKind kind;
  std::string_view window;
  std::string_view command_line;  // empty: as in the window
};

constexpr std::string_view kLearnCodes =
    "[ Tool ] の「Hamlog の Code をログから登録」で、御自分のログから登録できます";
constexpr std::string_view kBuildCodes =
    "tobarine-cli build codes Hamlog.csv で、御自分のログから登録できます";
constexpr std::string_view kChooseZone =
    "違っていたら、「U T C」か「J S T」を選び直して変換し直して下さい";
constexpr std::string_view kSetZone =
    "違っていたら、--set Op_3=0 (UTC) か --set Op_3=1 (JST) で変換し直して下さい";

constexpr std::string_view kOneToFiveLines =
    "交信ごとに改行し、一つの交信を五行までにした ADIF で変換し直して下さい";

constexpr Advice kAdvice[] = {
    {FindingKind::kUnknownMode, "MODE 変換テーブルに行を足すと読み替えます",
     "Mode_tbl.ini に行を足すと読み替えます"},
    {FindingKind::kNoMode, "元のログのモードを埋めて、変換し直して下さい", ""},
    {FindingKind::kNoBand,
     "元のログの周波数を直して下さい。BAND が空の交信は、多くのサービスが受け取りません", ""},
    {FindingKind::kGigahertzText, "元のログの周波数を MHz (10100 など) で書いて下さい", ""},
    {FindingKind::kBadDateOrTime, "元のログの日付と時刻を直して、変換し直して下さい", ""},
    {FindingKind::kNoZoneLetter, "Hamlog でその交信の時刻に J (JST) か U (UTC) を付けて下さい", ""},
    {FindingKind::kUnknownCode, kLearnCodes, kBuildCodes},
    {FindingKind::kNoHamlogCode, kLearnCodes, kBuildCodes},
    {FindingKind::kNoQslManager, "Rmks に @W3HNK のように書くと QSL_VIA になります", ""},
    {FindingKind::kInvalidByte,
     "ファイルが壊れていないか、別の文字コードで保存し直していないか確かめて下さい", ""},
    {FindingKind::kNotEncodable, "Hamlog では使えない文字です。元のログで別の字にして下さい", ""},
    {FindingKind::kUnclosedQuote, "その行の引用符 (\") を直して、変換し直して下さい", ""},
    {FindingKind::kSplitByComma, "元のログの Rmks などからコンマを無くして下さい", ""},
    {FindingKind::kDroppedNoDate, "元の ADIF の QSO_DATE を確かめて下さい", ""},
    {FindingKind::kDroppedSlashes, "元のログの名前や QTH の // (http:// など) を消して下さい", ""},
    {FindingKind::kLostInHeader, "見出しの終わりに <EOH> だけの行を入れて、変換し直して下さい", ""},
    {FindingKind::kSharedRecord, kOneToFiveLines, ""},
    {FindingKind::kRecordCut, kOneToFiveLines, ""},
    {FindingKind::kForeignMarks, "紙の QSL の印を元のログで確かめて下さい", ""},
    {FindingKind::kSubmodeIgnored, "Hamlog でモードを確かめて下さい", ""},
    {FindingKind::kDxccDisagrees, "Code と DXCC を元のログで確かめて下さい", ""},
    {FindingKind::kCarriedOver, "その交信の RST などを元のログで確かめて下さい", ""},
    {FindingKind::kUnknownJcc,
     "番号を確かめて下さい。新しい市や郡なら、[ Tool ] で JARL のリストを取り込んで下さい",
     "番号を確かめて下さい。新しい市や郡なら、tobarine-cli jarl download と build jcc で"
     "リストを取り込んで下さい"},
    {FindingKind::kUnknownEntity, "元のログのコールを確かめて下さい", ""},
    {FindingKind::kOddCall, "元のログのコールを確かめて下さい", ""},
    {FindingKind::kOddField, "元のログのその行を確かめて下さい", ""},
    {FindingKind::kOddCode, "表計算で保存し直していない、元の CSV を変換して下さい", ""},
    {FindingKind::kRecordCutOff, "zLog で開いて保存し直してから、変換して下さい", ""},
    {FindingKind::kZoneAgainstFile, kChooseZone, kSetZone},
    {FindingKind::kRemarksEmptied,
     "「ＷＡＳ 州名」の欄で Ｒｍｋｓ １ か Ｒｍｋｓ ２ を選んで、変換し直して下さい",
     "--set Op_2=0 (Rmks 1) か --set Op_2=1 (Rmks 2) で変換し直して下さい"},
    {FindingKind::kDuplicate, "要らない方を元のログで消して下さい", ""},
    {FindingKind::kTwoFrequencies, "一つの周波数にするなら、元のログを直して下さい", ""},
    {FindingKind::kOddIota, "元のログの Rmks から、IOTA ではない AS- や SA- などを無くして下さい",
     ""},
    {FindingKind::kDoubtfulState, "Rmks に州名だけを書くか、州名の前に接頭語を付けて下さい", ""},
    {FindingKind::kOddManager, "Rmks の @ の後ろには、マネージャーのコールだけを書いて下さい", ""},
    {FindingKind::kHalfWidthKana, "海外へ送るなら、元のログの Rmks や Name を直して下さい", ""},
    {FindingKind::kInsideQuotes, "前の行の引用符 (\") を直して、変換し直して下さい", ""},
};

}  // namespace

std::string_view finding_advice(FindingKind kind, Front front) {
  const auto* const found = std::ranges::find(kAdvice, kind, &Advice::kind);
  if (found == std::end(kAdvice)) return {};
  return front == Front::kWindow || found->command_line.empty() ? found->window
                                                                : found->command_line;
}

}  // namespace tobarine
