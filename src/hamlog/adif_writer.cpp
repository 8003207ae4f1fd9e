#include "hamlog/adif_writer.h"

#include <string>

#include "rules/version.h"
#include "text/cp932.h"
#include "text/keep_rule.h"
#include "text/strings.h"
#include "text/utf8.h"

namespace tobarine {
namespace {

constexpr std::string_view kHeaderStart = "<ADIF_VER:5>2.1.8\r\nADIF Export from Tobarine Version ";

}  // namespace

bool is_own_adif(const std::filesystem::path& file) {
  return begins_with(file, kHeaderStart);
}

void AdifWriter::write_header() {
  file_.buffer().append(kHeaderStart).append(kFormVersion);
  file_.buffer().append(
      "\r\nInternet:  https://tobarine.example/\r\n"
      "e-mail to: support@tobarine.example\r\n"
      "<EOH>\r\n\r\n");
  file_.end_record();
}

void AdifWriter::tag(std::string_view opening, std::string_view value, std::string_view type) {
  if (!is_plain(value)) {
    encoded_.clear();
    written_.lacking += encode_cp932(value, encoded_);
    written_.line_ends += blank_line_ends(encoded_);
    value = encoded_;
  }
  text_.append(opening);
  if (value.size() < 10) {
    text_ += static_cast<char>('0' + value.size());
  } else {
    text_ += std::to_string(value.size());
  }
  text_.append(type).append(value);
}

// The tags that both outputs begin with. The blanks inside are part of the form.
void AdifWriter::common_tags(const AdifContact& contact) {
  const QsoRecord& r = contact.record;
  tag("<CALL:", r.call);
  tag(" <QSO_DATE:", r.qso_date, ":d>");
  std::string digits = r.time_on;  // short: no allocation
  if (contains(digits, ":")) replace_all(digits, ":", "");
  tag(" <TIME_ON:", left_chars(digits, 4));
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

void AdifWriter::put_state(std::string_view state) {
  if (state.empty()) return;
  put(" <STATE:2>");
  put(state);
}

void AdifWriter::logger32_lines(const AdifContact& contact) {
  const QsoRecord& r = contact.record;
  put_state(r.state);
  if (write_qth_ && !r.qth.empty()) {
    tag(" <QTH:", r.qth);
    put(" ");
  }
  put("\r\n");
  if (!r.qsl_via.empty()) {
    tag("<QSL_VIA:", r.qsl_via);
    put(" ");
  }
  put("<QSL_SENT:1>");
  put(r.qsl_sent);
  put(" <QSL_RCVD:1>");
  put(r.qsl_rcvd);
  if (!r.dxcc.empty() && std::string_view(r.dxcc) != "0") tag(" <DXCC:", r.dxcc);
  if (!r.iota.empty()) tag(" <IOTA:", r.iota);
  // No blank before this tag: it has always followed the value before it directly.
  if (!r.comment.empty()) tag("<COMMENT:", r.comment);
  if (contact.name_written) tag(" <NAME:", r.name);
  if (const std::string_view grid = trim(r.grid); !grid.empty()) tag(" <GRIDSQUARE:", grid);
  put(" <EOR>\r\n\r\n");
}

void AdifWriter::eqsl_line(const AdifContact& contact) {
  const QsoRecord& r = contact.record;
  if (!r.comment.empty()) tag("<COMMENT:", r.comment);
  put(" ");
  put_state(r.state);
  put(" <EOR>\r\n");
}

AdifWriter::Written AdifWriter::write(const AdifContact& contact) {
  written_ = {};
  common_tags(contact);
  if (target_ == AdifTarget::kLogger32) {
    logger32_lines(contact);
  } else {
    eqsl_line(contact);
  }
  file_.end_record();
  return written_;
}

}  // namespace tobarine
