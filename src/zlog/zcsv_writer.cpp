#include "zlog/zcsv_writer.h"

#include "text/encoding_guess.h"
#include "text/strings.h"
#include "zlog/zcsv_columns.h"

namespace tobarine {
namespace {

void put(std::string_view value, std::string& line) {
  line += '"';
  if (contains(value, "\"")) {
    std::string doubled(value);
    replace_all(doubled, "\"", "\"\"");
    line += doubled;
  } else {
    line += value;
  }
  line += '"';
}

std::string text_of(const std::string& value) {
  return value;
}
std::string text_of(bool value) {
  return value ? "True" : "False";
}
template <typename Number>
std::string text_of(Number value) {
  return std::to_string(value);
}

// "20240427", "210203" to "2024/04/27" and "21:02:03".
std::string date_text(const std::string& date) {
  return date.substr(0, 4) + "/" + date.substr(4, 2) + "/" + date.substr(6);
}
std::string time_text(const std::string& time) {
  return time.substr(0, 2) + ":" + time.substr(2, 2) + ":" +
         (time.size() > 4 ? time.substr(4) : "00");
}

std::string special_text(zcsv::Special special, const ZlogQso& qso, Zone zone) {
  switch (special) {
    case zcsv::Special::kDate:
      return date_text(qso.moment->date(zone));
    case zcsv::Special::kTime:
      return time_text(qso.moment->time(zone));
    case zcsv::Special::kTimeZone:
      return zone == Zone::kJst ? "JST" : "UTC";
    case zcsv::Special::kBand:
      return zcsv::band_for_csv(qso.band);
    case zcsv::Special::kQslState:
      break;
  }
  return std::to_string(static_cast<unsigned>(qso.qsl_wish));
}

}  // namespace

ZcsvWriter::ZcsvWriter(OutputFile& file, Zone zone) : file_(file), zone_(zone) {
  std::string& line = file_.buffer();
  line += kUtf8Mark;
  for (const zcsv::Column& column : zcsv::columns()) {
    put(column.name, line);
    line += ',';
  }
  line.pop_back();
  line += "\r\n";
  file_.end_record();
}

bool ZcsvWriter::write(const ZlogQso& qso, std::size_t number, FindingLog& findings) {
  if (!fits_zlog(qso, number, findings)) return false;
  std::string& line = file_.buffer();
  for (const zcsv::Column& column : zcsv::columns()) {
    const std::string text = std::visit(
        [&](auto what) -> std::string {
          if constexpr (std::is_same_v<decltype(what), zcsv::Special>) {
            return special_text(what, qso, zone_);
          } else {
            return text_of(qso.*what);
          }
        },
        column.what);
    put(text, line);
    line += ',';
  }
  line.pop_back();
  line += "\r\n";
  file_.end_record();
  return true;
}

}  // namespace tobarine
