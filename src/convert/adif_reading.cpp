#include "convert/adif_reading.h"

namespace tobarine {
namespace {

constexpr AdifReadingName kReadings[] = {
    {"classic", "従来のまま", AdifReading::kClassic},
};

}  // namespace

std::span<const AdifReadingName> adif_readings() {
  return kReadings;
}

std::string reading_advice() {
  std::string ways;
  for (const AdifReadingName& name : adif_readings()) {
    ways.append(ways.empty() ? "" : " か ").append("--reading ").append(name.word);
    ways.append(" (").append(name.label).append(")");
  }
  return "変換するには " + ways + " を付けて下さい";
}

std::string classic_harm(const AdifLayout& layout) {
  if (layout.hurt == 0) return {};
  const std::size_t lost = layout.in_header + layout.shared;
  std::string text = "従来の読み方では " + std::to_string(layout.contacts) + " 件の交信のうち ";
  if (lost > 0) text += std::to_string(lost) + " 件が失われ";
  if (lost > 0 && layout.hurt > lost) text += "、";
  if (layout.hurt > lost) {
    text += std::to_string(layout.hurt - lost) + " 件が切れるか他の交信と混ざり";
  }
  text += "ます (";
  bool first = true;
  const auto because = [&](bool is_so, std::string_view reason) {
    if (is_so) text.append(first ? "" : "、").append(reason);
    first = first && !is_so;
  };
  because(layout.in_header > 0 && !layout.header_ended,
          "<EOH> が無いので初めの 20 行が見出しとして読み飛ばされる");
  because(layout.in_header > 0 && layout.header_ended, "<EOH> までの行に交信がある");
  because(layout.lone_cr, "行の終わりが CR だけである");
  because(layout.shared > 0 && !layout.lone_cr, "一行か一つのレコードに二つ以上の交信がある");
  because(layout.hurt > lost, "一つの交信が 6 行以上か、前の交信と同じ行にわたる");
  return text + ")";
}

}  // namespace tobarine
