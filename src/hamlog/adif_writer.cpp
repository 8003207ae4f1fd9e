#include "hamlog/adif_writer.h"

#include <array>
#include <charconv>

#include "text/cp932.h"
#include "text/strings.h"
#include "text/utf8.h"
#include "rules/version.h"

namespace tobarine {
namespace {

constexpr std::string_view kLineEnd = "\r\n";

}  // namespace

void AdifWriter::write_header() {
  put("<ADIF_VER:5>2.1.8\r\n");
  put("ADIF Export from Tobarine Version ");
  put(kVersion);
  put("\r\nInternet:  https://tobarine.example/\r\n");
  put("e-mail to: support@tobarine.example\r\n");
  put("<EOH>\r\n\r\n");
}

// The opening as far as the ":", then the value's length, ">" and the value.
void AdifWriter::tag(std::string_view opening, std::string_view value) {
  if (!is_ascii(value)) {
    encoded_.clear();
    lacking_ += encode_cp932(value, encoded_);
    value = encoded_;
  }
  std::array<char, 24> length{};
  const auto end = std::to_chars(length.data(), length.data() + length.size(), value.size()).ptr;
  std::string& out = file_.buffer();
  out.append(opening);
  out.append(length.data(), end);
  out += '>';
  out.append(value);
}

// The tags that both outputs begin with. The blanks inside are part of the form.
void AdifWriter::common_tags(const AdifContact& contact) {
  const QsoRecord& r = contact.record;
  std::string time = r.time_on;
  replace_all(time, ":", "");
  tag("<CALL:", r.call);
  put(" <QSO_DATE:8:d>");
  lacking_ += encode_cp932(r.qso_date, file_.buffer());
  put(" <TIME_ON:4>");
  lacking_ += encode_cp932(left_chars(time, 4), file_.buffer());
  tag(" <MODE:", r.adif_mode);
  tag(" <BAND:", r.band);
  if (!contact.band_only) tag(" <FREQ:", r.freq);
  tag(" <RST_SENT:", r.his_rst);
  if (target_ == AdifTarget::kLogger32) tag(" <RST_RCVD:", r.my_rst);
  if (!r.jcc.empty()) {
    tag(" <JCC:", r.jcc);
    put(" ");
  }
  if (!r.jcg.empty()) {
    tag(" <JCG:", r.jcg);
    put(" ");
  }
}

void AdifWriter::logger32_lines(const AdifContact& contact) {
  const QsoRecord& r = contact.record;
  if (!r.state.empty()) put(" <STATE:2>" + r.state);
  if (write_qth_ && !r.qth.empty()) {
    tag(" <QTH:", r.qth);
    put(" ");
  }
  put(kLineEnd);
  if (!r.qsl_via.empty()) {
    tag("<QSL_VIA:", r.qsl_via);
    put(" ");
  }
  put("<QSL_SENT:1>" + r.qsl_sent + " <QSL_RCVD:1>" + r.qsl_rcvd);
  if (!r.dxcc.empty() && r.dxcc != "0") tag(" <DXCC:", r.dxcc);
  if (!r.iota.empty()) tag(" <IOTA:", r.iota);
  // No blank before this tag: it has always followed the value before it directly.
  if (!r.comment.empty()) tag("<COMMENT:", r.comment);
  if (contact.name_written) tag(" <NAME:", r.name);
  if (!trim(r.grid).empty()) tag(" <GRIDSQUARE:", r.grid);
  put(" <EOR>\r\n\r\n");
}

void AdifWriter::eqsl_line(const AdifContact& contact) {
  const QsoRecord& r = contact.record;
  if (!r.comment.empty()) tag("<COMMENT:", r.comment);
  put(" ");
  if (!r.state.empty()) put(" <STATE:2>" + r.state);
  put(" <EOR>\r\n");
}

std::size_t AdifWriter::write(const AdifContact& contact) {
  lacking_ = 0;
  common_tags(contact);
  if (target_ == AdifTarget::kLogger32) {
    logger32_lines(contact);
  } else {
    eqsl_line(contact);
  }
  file_.flush_if_full();
  return lacking_;
}

}  // namespace tobarine
