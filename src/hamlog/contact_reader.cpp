#include "hamlog/contact_reader.h"

#include <array>
#include <string>

#include "text/strings.h"
#include "text/utf8.h"

namespace tobarine {
namespace {

constexpr double kLastYearOf2000s = 30;

// yy/mm/dd to yyyymmdd, by position, whatever the characters are.
void derive_date(std::string_view date, std::string& result) {
  if (is_blank(date)) {
    result.clear();
    return;
  }
  if (date.size() == 8 && is_ascii(date)) {  // nearly all
    result = {'2', '0', date[0], date[1], date[3], date[4], date[6], date[7]};
  } else {
    result.assign("20").append(left_chars(date, 2)).append(mid_chars(date, 3, 2));
    result.append(right_chars(date, 2));
  }
  const std::string_view year = left_chars(std::string_view(result).substr(2), 2);
  if (leading_number(year) > kLastYearOf2000s) {
    result[0] = '1';
    result[1] = '9';
  }
}

}  // namespace

void fill_record(std::span<const std::string_view> columns, QsoRecord& record) {
  constexpr std::array<std::string QsoRecord::*, 14> kFields = {
      &QsoRecord::call,   &QsoRecord::date, &QsoRecord::time, &QsoRecord::his_rst,
      &QsoRecord::my_rst, &QsoRecord::freq, &QsoRecord::mode, &QsoRecord::code,
      &QsoRecord::grid,   &QsoRecord::qsl,  &QsoRecord::name, &QsoRecord::qth,
      &QsoRecord::rmks1,  &QsoRecord::rmks2};
  for (std::string QsoRecord::*derived :
       {&QsoRecord::band, &QsoRecord::adif_mode, &QsoRecord::dxcc, &QsoRecord::jcc, &QsoRecord::jcg,
        &QsoRecord::state, &QsoRecord::iota, &QsoRecord::qsl_via, &QsoRecord::qsl_sent,
        &QsoRecord::qsl_rcvd, &QsoRecord::comment, &QsoRecord::band_remark,
        &QsoRecord::band_remark_pos}) {
    (record.*derived).clear();
  }
  for (std::size_t i = 0; i < kFields.size(); ++i) record.*kFields[i] = columns[i];
  derive_date(record.date, record.qso_date);
  record.time_on.assign(left_chars(record.time, 2)).append(right_chars(record.time, 3));
  record.freq = trim(columns[5]);
  record.qsl += "  ";
  record.qsl.resize(left_chars(record.qsl, 3).size());
}

}  // namespace tobarine
