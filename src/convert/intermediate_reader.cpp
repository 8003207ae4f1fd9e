#include "convert/intermediate_reader.h"

#include <span>

#include "text/error.h"
#include "text/output_file.h"
#include "text/strings.h"
#include "zlog/intermediate.h"

namespace tobarine {

void RowNumbers::add(std::size_t number) {
  has_row_.resize(number + 1);
  has_row_[number] = true;
}

std::size_t RowNumbers::after(std::size_t number) const {
  do {
    ++number;
  } while (number < has_row_.size() && !has_row_[number]);
  return number;
}

IntermediateFile write_intermediate(ZlogReader& log, char zone, const std::filesystem::path& path,
                                    const RunContext& context, FindingLog& findings) {
  IntermediateFile result;
  OutputFile file(path, keep_rule(context, findings));
  IntermediateWriter writer(file, zone);
  ZlogContact contact;
  std::size_t contacts = 0;
  try {
    while (log.next(contact, findings)) {
      context.tell(++contacts, log.file().bytes_read(), log.file().size());
      writer.write(contact, log.number(), findings);
      result.numbers.add(log.number());
    }
  } catch (const RecordError& error) {
    result.stopped_by = error.what();
  }
  file.close();
  return result;
}

bool IntermediateReader::next(QsoRecord& record, FindingLog& /*findings*/) {
  if (!rows_.next(fields_)) return false;
  number_ = numbers_.after(number_);
  if (fields_.size() != kIntermediateFields) {
    throw RecordError(rows_.file().path(), rows_.line(), "中間ファイルの欄の数が違います");
  }
  // Hamlog's columns: the call, then the intermediate file's fields 2 to 14.
  const std::string_view portable = fields_[1];
  const bool prefix = contains(fields_[kDxMarkField], kDxMark);
  call_ = fields_[0];
  if (prefix) {
    call_.assign(portable).append("/").append(fields_[0]);
  } else if (!portable.empty()) {
    call_.append("/").append(portable);
  }
  fields_[1] = call_;
  fill_record(std::span(fields_).subspan(1), record);
  replace_all(record.rmks1, kDxMark, "");
  replace_all(record.rmks2, kDxMark, "");
  return true;
}

}  // namespace tobarine
