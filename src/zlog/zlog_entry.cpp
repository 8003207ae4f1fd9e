#include "zlog/zlog_entry.h"

namespace tobarine {

void put_memo(const ZlogEntry& entry, bool with_operator, std::string& text) {
  const std::size_t begin = text.size();
  const auto separate = [&] {
    if (text.size() > begin) text += ' ';
  };
  if (!entry.khz.empty()) text.append("(").append(entry.khz).append(")");
  if (with_operator && entry.operator_name && !entry.operator_name->empty()) {
    separate();
    text.append("%%").append(*entry.operator_name).append("%%");
  }
  if (!entry.notes.empty()) {
    separate();
    text.append(entry.notes);
  }
}

}  // namespace tobarine
