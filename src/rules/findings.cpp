#include "rules/findings.h"

#include <algorithm>
#include <numeric>
#include <ranges>

#include "text/printable.h"
#include "text/utf8.h"

namespace tobarine {
namespace {

struct KindText {
  FindingKind kind;
  std::string_view name;
  std::string_view heading;
};

constexpr KindText kKinds[] = {
    {FindingKind::kLeftOutByCode, "left-out-by-code",
     "Ｃｏｄｅ が ５００Ａ 以下なので出力しなかった交信"},
    {FindingKind::kLeftOutByJst, "left-out-by-jst", "時刻表示が ＪＳＴ なので出力しなかった交信"},
    {FindingKind::kUnknownMode, "unknown-mode", "ADIF にも変換テーブルにも無いモード"},
    {FindingKind::kNoBand, "no-band", "バンドが分からない周波数"},
    {FindingKind::kBandLost, "band-lost",
     "周波数の欄からはバンドが分からなくなった (BAND の表に行の無いバンド)"},
    {FindingKind::kGigahertzText, "gigahertz-text", "GHz の表記が短波のバンドになった周波数"},
    {FindingKind::kBadDateOrTime, "bad-date-or-time",
     "日付または時刻として読めない (時刻を変換せずそのまま出力した) 交信"},
    {FindingKind::kNoZoneLetter, "no-zone-letter",
     "時刻に J も U も無い (UTC に変換せずそのまま出力した) 交信"},
    {FindingKind::kUnknownCode, "unknown-code", "h2l_cty.mas に無い Code"},
    {FindingKind::kNoQslManager, "no-qsl-manager",
     "QSL が M なのに Remarks に @マネージャー が無い交信"},
    {FindingKind::kInvalidByte, "invalid-byte",
     "Shift-JIS (CP932) ではないバイト (そのまま書き写した)"},
    {FindingKind::kNotEncodable, "not-encodable",
     "Shift-JIS (CP932) で書けない文字 (\"?\" にした)"},
    {FindingKind::kUnclosedQuote, "unclosed-quote",
     "閉じていない引用符 (以降の行がすべて一つの欄になった)"},
    {FindingKind::kSplitByComma, "split-by-comma",
     "引用符の中のコンマで欄が分かれ、後ろの欄がずれた行"},
    {FindingKind::kDroppedNoDate, "dropped-no-date", "日付が無いので出力しなかった交信"},
    {FindingKind::kDroppedSlashes, "dropped-slashes", "\"//\" を含むので出力しなかった交信"},
    {FindingKind::kRecordCut, "record-cut",
     "５行を超えるので切れたレコード (続きは次の交信になった)"},
    {FindingKind::kCarriedOver, "carried-over", "タグが無く、前の交信の値になった欄"},
    {FindingKind::kOddTagLength, "odd-tag-length", "長さが普通でない TIME_ON、QSO_DATE"},
    {FindingKind::kValueCut, "value-cut", "７文字に切った周波数"},
    {FindingKind::kQuoteDropped, "quote-dropped", "値の中の引用符 (取り除いた)"},
    {FindingKind::kUnknownJcc, "unknown-jcc", "JCC_JCG.mas に無い番号 (QTH は空欄)"},
    {FindingKind::kUnknownEntity, "unknown-entity",
     "DXCC エンティティが分からない交信 (Code と QTH は空欄)"},
    {FindingKind::kNoHamlogCode, "no-hamlog-code", "l2h_cty.mas に Code の無いエンティティ"},
    {FindingKind::kReadAsUtf8, "read-as-utf8", "UTF-8 として読んだファイル"},
    {FindingKind::kMaybeUtf8, "maybe-utf8",
     "Shift-JIS として読んだが UTF-8 かもしれないファイル (文字化けがないか確認して下さい)"},
    {FindingKind::kOddField, "odd-field", "日付、時刻、コール、バンドがそれらしくない交信"},
    {FindingKind::kFreqKept, "freq-kept",
     "かっこの中の周波数を読めないので、前の交信の周波数にした交信"},
    {FindingKind::kFreqOffBand, "freq-off-band", "周波数がバンドの欄と合わない交信"},
    {FindingKind::kFreqMisread, "freq-misread",
     "かっこの中が kHz の整数ではないので、周波数が正しくない交信"},
    {FindingKind::kFreqNotRead, "freq-not-read",
     "メモの欄の外にあるので読まなかった周波数 (バンドの周波数にした)"},
    {FindingKind::kModeKept, "mode-kept",
     "モードのコードが分からないので、前の交信のモードにした交信"},
    {FindingKind::kBandKept, "band-kept",
     "バンドのコードが分からないので、前の交信のバンドにした交信"},
    {FindingKind::kLeftOutByTime, "left-out-by-time",
     "日時が 1989/09/17 から 2079/06/04 までの外なので出力しなかった交信"},
    {FindingKind::kRecordCutOff, "record-cut-off",
     "ファイルが途中で切れていて出力しなかった最後の交信"},
    {FindingKind::kNoDateOrCall, "no-date-or-call", "日付またはコールが無いので出力しなかった交信"},
    {FindingKind::kNoZlogBand, "no-zlog-band",
     "zLog に無いバンドなので .all と .zlo に出力しなかった交信"},
    {FindingKind::kOtherMode, "other-mode", "zLog に無いので Other にしたモード"},
    {FindingKind::kZlogFieldCut, "zlog-field-cut", "zLog のファイルの欄に入りきらない値"},
    {FindingKind::kZlogFreqDropped, "zlog-freq-dropped",
     "四桁か五桁の kHz にならないので zLog のメモに書けなかった周波数"},
    {FindingKind::kZlogFreqCut, "zlog-freq-cut", "zLog のメモに書かなかった、kHz より下の桁"},
    {FindingKind::kZoneRead, "zone-read", "zLog の時刻の読み方"},
    {FindingKind::kZoneAgainstFile, "zone-against-file",
     "zLog の時刻の読み方がファイルの記録と違います"},
    {FindingKind::kZoneWritten, "zone-written", "時刻の書き方"},
    {FindingKind::kUnreadRecord, "unread-record", "読めなかったレコード"},
    {FindingKind::kUnreadColumn, "unread-column", "名前を知らないので読まなかった欄"},
    {FindingKind::kFieldNotHeld, "field-not-held", "出力のログに書く所の無い欄"},
    {FindingKind::kLeftOutInvalid, "left-out-invalid",
     "zLog で無効にしてあるので出力しなかった交信"},
    {FindingKind::kRemarksEmptied, "remarks-emptied",
     "州名の転記先が「不特定」なので、二つの Rmks は空欄"},
    {FindingKind::kFileKept, "file-kept", "前からあったファイルは名前を変えて残しました"},
    {FindingKind::kOutputName, "output-name", "出力の名前"},
    {FindingKind::kNoMode, "no-mode", "モードが空の交信"},
    {FindingKind::kOddCall, "odd-call", "コールサインになっていないコール (そのまま出力した)"},
    {FindingKind::kOddCode, "odd-code",
     "桁の足りない Code (表計算で保存すると先頭の 0 が失われます)"},
    {FindingKind::kTwoFrequencies, "two-frequencies",
     "二つ並んだ周波数 (初めの周波数のバンドにした)"},
    {FindingKind::kOddIota, "odd-iota", "IOTA の番号の形ではない IOTA (そのまま出力した)"},
    {FindingKind::kDoubtfulState, "doubtful-state",
     "州名か普通の言葉か分からない STATE (そのまま出力した)"},
    {FindingKind::kOddManager, "odd-manager",
     "コールサインになっていない QSL マネージャー (そのまま出力した)"},
    {FindingKind::kHalfWidthKana, "half-width-kana",
     "半角カナのある値 (海外のソフトや eQSL.cc では読めません)"},
    {FindingKind::kDuplicate, "duplicate", "前と同じ交信 (コール、バンド、モード、時刻が同じ)"},
    {FindingKind::kImpossibleDay, "impossible-day",
     "暦にない日付 (LoTW の TQSL がこの日付で止まらなくなります。元のログを直して下さい)"},
    {FindingKind::kLineEndInValue, "line-end-in-value", "値の中の改行 (空白にした)"},
    {FindingKind::kQuoteSpansLines, "quote-spans-lines",
     "引用符で囲まれた欄が次の行に続く交信 (余分な引用符を直して下さい)"},
    {FindingKind::kInsideQuotes, "inside-quotes", "前の行の引用符の中なので出力しなかった交信"},
    {FindingKind::kTagRepaired, "tag-repaired", "長さや形が正しくないので読み直したタグ"},
    {FindingKind::kTextBetweenTags, "text-between-tags",
     "どの欄のものでもないので読まなかった文字"},
    {FindingKind::kNoEndOfRecord, "no-end-of-record",
     "<EOR> が無いので、次の CALL かファイルの終わりまでを一つとした交信"},
    {FindingKind::kFieldRepeated, "field-repeated", "二度あるので初めの値を採った欄"},
    {FindingKind::kNotAscii, "not-ascii",
     "ASCII で書けないので出力しなかった欄 (文字コードを UTF-8 にすると出力します)"},
    {FindingKind::kValueNotAllowed, "value-not-allowed",
     "ADIF の規格に合わないので APP_TOBARINE_ の欄に残した値"},
    {FindingKind::kModeNotStandard, "mode-not-standard",
     "ADIF の規格に無いので APP_TOBARINE_MODE の欄に残したモード"},
    {FindingKind::kLostInHeader, "lost-in-header",
     "ファイルの見出しとして読み飛ばされて失われた交信"},
    {FindingKind::kSharedRecord, "shared-record",
     "後の交信と一つのレコードとして読まれて失われた交信"},
    {FindingKind::kNotAContact, "not-a-contact", "CALL のタグが無く、交信ではないレコード"},
    {FindingKind::kAdifLayout, "adif-layout", "従来の読み方に合わない ADIF"},
    {FindingKind::kContactCount, "contact-count",
     "入力数 (CALL のある行の数) が交信の数と違うファイル"},
    {FindingKind::kForeignTag, "foreign-tag", "MY_ の付くタグなど、名前の違うタグの値が入った欄"},
    {FindingKind::kForeignMarks, "foreign-marks",
     "LoTW や eQSL の印が紙の QSL の印になった、または消した交信"},
    {FindingKind::kSubmodeIgnored, "submode-ignored", "SUBMODE が失われたモード"},
    {FindingKind::kNotCarried, "not-carried", "写す欄が無くて失われた値"},
    {FindingKind::kDxccDisagrees, "dxcc-disagrees", "DXCC のタグが国内、国外の判定と合わない交信"},
    {FindingKind::kBehindCr, "behind-cr",
     "CR だけの改行の後ろなので出力しなかった交信 (改行を CR LF にして下さい)"},
};
static_assert(std::ranges::equal(kKinds, std::views::iota(0, static_cast<int>(FindingKind::kCount)),
                                 {},
                                 [](const KindText& row) { return static_cast<int>(row.kind); }),
              "a row a kind, in their order");

const KindText& text_of(FindingKind kind) {
  return kKinds[static_cast<std::size_t>(kind)];
}

}  // namespace

std::string_view finding_name(FindingKind kind) {
  return text_of(kind).name;
}
std::string_view finding_heading(FindingKind kind) {
  return text_of(kind).heading;
}

std::size_t FindingLog::about_contacts() const {
  const std::size_t all = std::accumulate(counts_.begin(), counts_.end(), std::size_t{0});
  return all - static_cast<std::size_t>(std::ranges::count(kept_, 0U, &Finding::line));
}

void FindingLog::add(FindingKind kind, std::size_t line, std::string_view call,
                     std::string_view text) {
  if (++counts_[static_cast<std::size_t>(kind)] > kKept) return;
  const auto kept = [](std::string_view whole) {
    const std::string_view part = left_chars(whole, kLongestText);
    return printable(part) + (part.size() < whole.size() ? "…" : "");
  };
  kept_.push_back({kind, line, kept(call), kept(text)});
}

void report_line_ends(std::size_t count, std::size_t line, std::string_view call,
                      FindingLog& findings) {
  if (count == 0) return;
  findings.add(FindingKind::kLineEndInValue, line, call, std::to_string(count) + " 箇所");
}

}  // namespace tobarine
