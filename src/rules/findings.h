// What a run tells the user beside its result: values, collected while reading goes on.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace tobarine {

enum class FindingKind {
  kLeftOutByCode,
  kLeftOutByJst,
  kUnknownMode,
  kNoBand,
  kBandLost,
  kGigahertzText,
  kBadDateOrTime,
  kNoZoneLetter,
  kUnknownCode,
  kNoQslManager,
  kInvalidByte,
  kNotEncodable,
  kUnclosedQuote,
  kSplitByComma,
  kDroppedNoDate,
  kDroppedSlashes,
  kRecordCut,
  kCarriedOver,
  kOddTagLength,
  kValueCut,
  kQuoteDropped,
  kUnknownJcc,
  kUnknownEntity,
  kNoHamlogCode,
  kReadAsUtf8,
  kMaybeUtf8,
  kOddField,
  kFreqKept,
  kFreqOffBand,
  kFreqMisread,
  kFreqNotRead,
  kModeKept,
  kBandKept,
  kLeftOutByTime,
  kRecordCutOff,
  kNoDateOrCall,
  kNoZlogBand,
  kOtherMode,
  kZlogFieldCut,
  kZlogFreqDropped,
  kZlogFreqCut,
  kZoneRead,
  kZoneAgainstFile,
  kZoneWritten,
  kUnreadRecord,
  kUnreadColumn,
  kFieldNotHeld,
  kLeftOutInvalid,
  kRemarksEmptied,
  kFileKept,
  kOutputName,
  kNoMode,
  kOddCall,
  kOddCode,
  kTwoFrequencies,
  kOddIota,
  kDoubtfulState,
  kOddManager,
  kHalfWidthKana,
  kDuplicate,
  kImpossibleDay,
  kLineEndInValue,
  kQuoteSpansLines,
  kInsideQuotes,
  kTagRepaired,
  kTextBetweenTags,
  kNoEndOfRecord,
  kFieldRepeated,
  kNotAscii,
  kValueNotAllowed,
  kModeNotStandard,
  kLostInHeader,
  kSharedRecord,
  kNotAContact,
  kAdifLayout,
  kContactCount,
  kForeignTag,
  kForeignMarks,
  kSubmodeIgnored,
  kNotCarried,
  kDxccDisagrees,
  kBehindCr,
  kCount
};

// The stable name of a kind for machines ("unknown-mode") and its heading for people.
std::string_view finding_name(FindingKind kind);
std::string_view finding_heading(FindingKind kind);

struct Finding {
  FindingKind kind;
  std::size_t line;  // of the input file, from 1; 0 when none belongs to it
  std::string call;
  std::string text;  // the value in question, or empty; cut as `call` is, see FindingLog
};

// Keeps the first kKept findings of each kind, and the count of all.
class FindingLog {
 public:
  static constexpr std::size_t kKept = 1000;
  static constexpr std::size_t kLongestText = 200;  // characters; what is longer is cut

  void add(FindingKind kind, std::size_t line, std::string_view call, std::string_view text);

  std::size_t count(FindingKind kind) const { return counts_[static_cast<std::size_t>(kind)]; }
  std::size_t about_contacts() const;  // the count of all that belong to a line
  const std::vector<Finding>& kept() const { return kept_; }  // in the order of adding

 private:
  std::array<std::size_t, static_cast<std::size_t>(FindingKind::kCount)> counts_{};
  std::vector<Finding> kept_;
};

// Reports the line ends in a contact's values, each of which was written as a blank.
void report_line_ends(std::size_t count, std::size_t line, std::string_view call,
                      FindingLog& findings);

}  // namespace tobarine
