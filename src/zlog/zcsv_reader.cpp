#include "zlog/zcsv_reader.h"

#include <algorithm>
#include <charconv>

#include "text/error.h"
#include "text/strings.h"
#include "zlog/zlox_record.h"

namespace tobarine {
namespace {

// A whole number; false for anything else. An empty text is 0.
template <typename Number>
bool read_number(std::string_view text, Number& number) {
  number = 0;
  if (text.empty()) return true;
  const char* const end = text.data() + text.size();
  const auto read = std::from_chars(text.data(), end, number);
  if (read.ec == std::errc() && read.ptr == end) return true;
  number = 0;
  return false;
}

bool read_value(std::string_view text, bool& value) {
  value = equal_ignoring_case(text, "True");
  return value || text.empty() || equal_ignoring_case(text, "False");
}

bool read_value(std::string_view text, std::string& value) {
  value = text;
  return true;
}

bool read_value(std::string_view text, unsigned& value) {
  return read_number(text, value);
}
bool read_value(std::string_view text, std::int32_t& value) {
  return read_number(text, value);
}

}  // namespace

ZcsvReader::ZcsvReader(const std::filesystem::path& path) : rows_(path, true) {
  std::string heading;
  if (rows_.next(fields_)) {
    for (const std::string_view name : fields_) heading.append(name).append(",");
  }
  if (!zcsv::is_heading(heading)) {
    throw FileError(path, "zLog の CSV ではありません (1 行目が Date,Time,TimeZone,… ではない)");
  }
  for (const std::string_view name : fields_) {
    const auto found = std::ranges::find(zcsv::columns(), name, &zcsv::Column::name);
    const bool known = found != zcsv::columns().end();
    columns_.push_back(known ? &*found : nullptr);
    if (!known) unknown_.append(unknown_.empty() ? "" : "、").append(name);
  }
}

void ZcsvReader::read(const zcsv::Column& column, std::string_view value, ZlogQso& qso) {
  if (const auto* const special = std::get_if<zcsv::Special>(&column.what)) {
    switch (*special) {
      case zcsv::Special::kDate:
        date_ = value;
        return;
      case zcsv::Special::kTime:
        time_ = value;
        return;
      case zcsv::Special::kTimeZone:
        zone_ = value;
        return;
      case zcsv::Special::kBand:
        qso.band = zcsv::band_from_csv(value);
        if (qso.band.empty()) note_odd(qso, "バンド", value);
        return;
      case zcsv::Special::kQslState:
        break;
    }
    unsigned wish = 0;
    const bool well = read_number(value, wish) && wish <= 2;
    qso.qsl_wish = well ? static_cast<QslWish>(wish) : QslWish::kNone;
    if (!well) note_odd(qso, column.name, value);
    return;
  }
  std::visit(
      [&](auto member) {
        if constexpr (!std::is_same_v<decltype(member), zcsv::Special>) {
          if (!read_value(value, qso.*member)) note_odd(qso, column.name, value);
        }
      },
      column.what);
}

bool ZcsvReader::next(ZlogQso& qso, FindingLog& findings) {
  if (!unknown_.empty()) findings.add(FindingKind::kUnreadColumn, 0, "", unknown_);
  unknown_.clear();
  do {
    if (!rows_.next(fields_)) return false;
  } while (fields_.size() == 1 && fields_[0].empty());
  qso = {};
  date_.clear();
  time_.clear();
  zone_.clear();
  for (std::size_t i = 0; i < std::min(fields_.size(), columns_.size()); ++i) {
    if (columns_[i] != nullptr) read(*columns_[i], trim(fields_[i]), qso);
  }
  if (fields_.size() != columns_.size()) {
    note_odd(qso, "欄の数", std::to_string(fields_.size()));
  }
  if (std::ranges::find(zlox::kModes, qso.mode) == zlox::kModes.end()) {
    note_odd(qso, "モード", qso.mode);
  }
  if (!qso.freq_khz.empty() && !is_decimal(qso.freq_khz)) {
    note_odd(qso, "周波数", qso.freq_khz);
    qso.freq_khz.clear();
  }
  if (qso.freq_khz.empty()) qso.freq_khz = freq_in_memo(qso.memo);
  if (zone_ != "UTC" && zone_ != "JST") note_odd(qso, "TimeZone", zone_);
  const Zone zone = zone_ == "JST" ? Zone::kJst : Zone::kUtc;
  qso.moment = Moment::read(date_, time_, zone);
  if (!qso.moment) note_odd(qso, "日時", date_ + " " + time_);
  if (rows_.invalid_bytes() > 0) {
    findings.add(FindingKind::kInvalidByte, number(), qso.call,
                 std::to_string(rows_.invalid_bytes()) + " バイト");
  }
  if (rows_.unclosed_quote()) findings.add(FindingKind::kUnclosedQuote, number(), qso.call, "");
  if (const std::string odd = odd_fields(qso); !odd.empty()) {
    findings.add(FindingKind::kOddField, number(), qso.call, odd);
  }
  return true;
}

}  // namespace tobarine
