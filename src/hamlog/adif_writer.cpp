#include "hamlog/adif_writer.h"

#include <charconv>
#include <string>

#include "rules/version.h"
#include "text/cp932.h"
#include "text/keep_rule.h"
#include "text/strings.h"
#include "text/utf8.h"

namespace tobarine {
namespace {

constexpr std::string_view kHeaderStart = "<ADIF_VER:5>2.1.8\r\nADIF Export from Tobarine Version ";

// More than all tag names, lengths and blanks of a record take together.
constexpr std::size_t kTagsOfRecord = 512;

// No field takes more bytes in the file than it has here.
std::size_t most_bytes(const QsoRecord& r) {
  return kTagsOfRecord + r.call.size() + r.qso_date.size() + r.time_on.size() + r.adif_mode.size() +
         r.band.size() + r.freq.size() + r.his_rst.size() + r.my_rst.size() + r.jcc.size() +
         r.jcg.size() + r.qth.size() + r.qsl_via.size() + r.iota.size() + r.comment.size() +
         r.name.size() + r.grid.size();
}

// The first Size bytes and the last.
template <std::size_t Size>
void copy_ends(std::string_view value, char* out) {
  std::memcpy(out, value.data(), Size);
  std::memcpy(out + value.size() - Size, value.data() + value.size() - Size, Size);
}

}  // namespace

bool is_own_adif(const std::filesystem::path& file) {
  return begins_with(file, kHeaderStart);
}

void AdifWriter::write_header() {
  file_.buffer().append(kHeaderStart).append(kVersion);
  file_.buffer().append(
      "\r\nInternet:  https://tobarine.example/\r\n"
      "e-mail to: support@tobarine.example\r\n"
      "<EOH>\r\n\r\n");
  file_.end_record();
}

// Values are short; two overlapping copies of a fixed size are faster than one of a variable size.
void AdifWriter::put_value(std::string_view value) {
  const std::size_t n = value.size();
  if (n > 16) {
    std::memcpy(out_, value.data(), n);
  } else if (n >= 8) {
    copy_ends<8>(value, out_);
  } else if (n >= 4) {
    copy_ends<4>(value, out_);
  } else if (n >= 2) {
    copy_ends<2>(value, out_);
  } else if (n == 1) {
    *out_ = value[0];
  }
  out_ += n;
}

void AdifWriter::put_encoded(std::string_view value) {
  if (is_ascii(value)) {
    put_value(value);
  } else {
    lacking_ += encode_cp932(value, out_);
  }
}

void AdifWriter::tag_value(std::string_view value) {
  if (!is_ascii(value)) {
    encoded_.clear();
    lacking_ += encode_cp932(value, encoded_);
    value = encoded_;
  }
  if (value.size() < 10) {
    *out_++ = static_cast<char>('0' + value.size());
  } else {
    constexpr std::size_t kLongestLength = 20;
    out_ = std::to_chars(out_, out_ + kLongestLength, value.size()).ptr;
  }
  *out_++ = '>';
  put_value(value);
}

// The tags that both outputs begin with. The blanks inside are part of the form.
void AdifWriter::common_tags(const AdifContact& contact) {
  const QsoRecord& r = contact.record;
  tag("<CALL:", r.call);
  put(" <QSO_DATE:8:d>");
  put_encoded(r.qso_date);
  put(" <TIME_ON:4>");
  std::string digits = r.time_on;  // short: no allocation
  if (contains(digits, ":")) replace_all(digits, ":", "");
  put_encoded(left_chars(digits, 4));
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
  put_value(state);
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
  put_value(r.qsl_sent);
  put(" <QSL_RCVD:1>");
  put_value(r.qsl_rcvd);
  if (!r.dxcc.empty() && std::string_view(r.dxcc) != "0") tag(" <DXCC:", r.dxcc);
  if (!r.iota.empty()) tag(" <IOTA:", r.iota);
  // No blank before this tag: it has always followed the value before it directly.
  if (!r.comment.empty()) tag("<COMMENT:", r.comment);
  if (contact.name_written) tag(" <NAME:", r.name);
  if (!is_blank(r.grid)) tag(" <GRIDSQUARE:", r.grid);
  put(" <EOR>\r\n\r\n");
}

void AdifWriter::eqsl_line(const AdifContact& contact) {
  const QsoRecord& r = contact.record;
  if (!r.comment.empty()) tag("<COMMENT:", r.comment);
  put(" ");
  put_state(r.state);
  put(" <EOR>\r\n");
}

std::size_t AdifWriter::write(const AdifContact& contact) {
  lacking_ = 0;
  if (const std::size_t most = most_bytes(contact.record); text_.size() < most) text_.resize(most);
  out_ = text_.data();
  common_tags(contact);
  if (target_ == AdifTarget::kLogger32) {
    logger32_lines(contact);
  } else {
    eqsl_line(contact);
  }
  file_.buffer().append(text_.data(), out_);
  file_.end_record();
  return lacking_;
}

}  // namespace tobarine
