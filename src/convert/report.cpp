#include "convert/report.h"

#include <string_view>

#include "text/strings.h"

namespace tobarine {

namespace {

void put_advice(FindingKind kind, Front front, std::string& text) {
  const std::string_view advice = finding_advice(kind, front);
  if (!advice.empty()) text.append("  → ").append(advice).append("\n");
}

}  // namespace

std::string file_notes(const ConversionReport& report, Front front) {
  std::string text;
  for (const Finding& finding : report.findings.kept()) {
    if (finding.line != 0) continue;
    text.append(finding_heading(finding.kind));
    text.append(finding.text.empty() ? "" : ": ").append(finding.text).append("\n");
    put_advice(finding.kind, front, text);
  }
  return text;
}

std::string report_text(const ConversionReport& report, Front front) {
  std::string text = file_notes(report, front);
  for (int k = 0; k < static_cast<int>(FindingKind::kCount); ++k) {
    const auto kind = static_cast<FindingKind>(k);
    const std::size_t count = report.findings.count(kind);
    std::string items;
    for (const Finding& finding : report.findings.kept()) {
      if (finding.kind != kind || finding.line == 0) continue;
      const std::string number = std::to_string(finding.line);
      items.append("  ").append(report.in_records ? "レコード " + number : number + " 行目");
      items.append("  ").append(finding.call);
      items.append("  ").append(finding.text).append("\n");
    }
    if (items.empty()) continue;
    text.append(finding_heading(kind)).append(": ").append(std::to_string(count)).append(" 件\n");
    put_advice(kind, front, text);
    text.append(items);
    if (count > FindingLog::kKept) {
      text.append("  ... 以下 ").append(std::to_string(count - FindingLog::kKept));
      text.append(" 件は省略\n");
    }
  }
  return text;
}

std::string report_csv(const ConversionReport& report) {
  std::string text = report.in_records ? "レコード" : "行";
  text += ",コール,内容,お知らせ\n";
  const auto put = [&text](std::string value) {
    replace_all(value, "\"", "\"\"");
    text.append(",\"").append(value).append("\"");
  };
  for (const Finding& finding : report.findings.kept()) {
    if (finding.line == 0) continue;
    text += std::to_string(finding.line);
    put(finding.call);
    put(finding.text);
    put(std::string(finding_heading(finding.kind)));
    text += '\n';
  }
  return text;
}

}  // namespace tobarine
