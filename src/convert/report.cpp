#include "convert/report.h"

#include <string_view>

namespace tobarine {

std::string report_text(const ConversionReport& report) {
  std::string text;
  for (int k = 0; k < static_cast<int>(FindingKind::kCount); ++k) {
    const auto kind = static_cast<FindingKind>(k);
    const std::size_t count = report.findings.count(kind);
    if (count == 0) continue;
    text.append(finding_heading(kind)).append(": ").append(std::to_string(count)).append(" 件\n");
    for (const Finding& finding : report.findings.kept()) {
      if (finding.kind != kind) continue;
      if (finding.line == 0) continue;  // about the file as a whole: the heading says it all
      text.append("  ").append(std::to_string(finding.line)).append(" 行目  ");
      text.append(finding.call).append("  ").append(finding.text).append("\n");
    }
    if (count > FindingLog::kKept) {
      text.append("  ... 以下 ").append(std::to_string(count - FindingLog::kKept));
      text.append(" 件は省略\n");
    }
  }
  return text;
}

}  // namespace tobarine
