// The readers of logs.
#include "editors/file_editor.h"
#include "hamlog/adif_parser.h"
#include "hamlog/adif_reader.h"
#include "hamlog/hamlog_csv.h"
#include "tables.h"
#include "targets.h"
#include "text/cp932.h"
#include "text/error.h"
#include "text/line_index.h"
#include "zlog/all_reader.h"
#include "zlog/contest.h"
#include "zlog/zlo_reader.h"

namespace tobarine::fuzz {
namespace {

void read_hamlog(ContactReader& reader) {
  FindingLog findings;
  QsoRecord record;
  std::size_t line = 0;
  while (reader.next(record, findings)) {
    require(reader.line() > line, "contacts come in the order of their lines");
    line = reader.line();
    require(record.qsl.size() >= 2, "the QSL column has its blanks");
    const ContactReader::Done done = reader.done();
    require(done.part <= done.whole, "no more is done than there is");
  }
}

void hamlog_lines(std::string_view bytes) {
  const auto file = scratch_file("log.csv", bytes);
  try {
    HamlogLineReader reader(file, check_hamlog_csv(file).utf8);
    read_hamlog(reader);
  } catch (const Error&) {
  }
}

void hamlog_rows(std::string_view bytes) {
  const auto file = scratch_file("log.csv", bytes);
  for (const bool utf8 : {false, true}) {
    try {
      HamlogRowReader reader(file, utf8);
      read_hamlog(reader);
    } catch (const Error&) {
    }
  }
}

void adif(std::string_view bytes) {
  const auto file = scratch_file("log.adi", bytes);
  const auto& tables = delivered<ConversionTables>();
  try {
    scan_adif(file);
    for (const bool utf8 : {false, true}) {
      AdifRecordReader reader(file, utf8);
      AdifParser parser(tables.bands, tables.modes, {true, utf8 ? 0 : 1, utf8}, {utf8, utf8, utf8});
      FindingLog findings;
      QsoRecord record;
      std::string text;
      while (reader.next(text)) parser.parse(text, reader.line(), record, findings);
    }
  } catch (const Error&) {
  }
}

void read_zlog(ZlogReader& reader) {
  FindingLog findings;
  ZlogContact contact;
  std::size_t number = 0;
  while (reader.next(contact, findings)) {
    require(reader.number() > number, "contacts come in the order of the log");
    number = reader.number();
  }
}

void zlog_all(std::string_view bytes) {
  const auto file = scratch_file("log.all", bytes);
  try {
    AllReader reader(file);
    read_zlog(reader);
    require(count_all_contacts(file) + 1 == std::max<std::size_t>(reader.number(), 1),
            "every line behind the header is a contact");
    refuse_foreign_all(file);
  } catch (const Error&) {
  }
}

void zlog_zlo(std::string_view bytes) {
  const auto file = scratch_file("log.zlo", bytes);
  try {
    read_contest(file);
    ZloReader reader(file);
    read_zlog(reader);
    refuse_foreign_zlo(file);
  } catch (const Error&) {
  }
}

// Text files as the viewer and the editor take them.
void text_file(std::string_view bytes) {
  std::string utf8;
  decode_cp932(bytes, utf8);
  // Not the same bytes: some characters have two codes. So a broken byte may make a pair with what
  // stands behind it, which sound text never does.
  const bool sound = !has_invalid_byte(utf8);
  require(!sound || from_cp932(to_cp932(utf8)) == utf8, "text survives the way to CP932 and back");
  const auto file = scratch_file("notes.txt", bytes);
  try {
    const LineIndex lines(file, [](std::string_view) {});
    for (std::size_t i = lines.size(); i-- > 0;) (void)lines.line(i);
    require(lines.find("\x01\x02", 0) <= lines.size(), "a line is found or not");
    FileEditor editor(file);
    editor.save(editor.text());
    require(!sound || from_cp932(bytes_of(file)) == utf8,
            "a text saved as it was read stays the same");
  } catch (const Error&) {
  }
}

constexpr Target kTargets[] = {
    {"hamlog_lines", hamlog_lines, {"samples/hamlog.csv"}},
    {"hamlog_rows", hamlog_rows, {"samples/hamlog.csv"}},
    {"adif", adif, {"samples/logger32.adi", "samples/n1mm.adi"}},
    {"zlog_all", zlog_all, {"samples/contest.all"}},
    {"zlog_zlo", zlog_zlo, {"samples/contest.zlo"}},
    {"text_file", text_file, {"samples/hamlog.csv", "samples/n1mm.adi"}},
};

}  // namespace

std::span<const Target> log_targets() {
  return kTargets;
}

}  // namespace tobarine::fuzz
