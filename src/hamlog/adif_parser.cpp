#include "hamlog/adif_parser.h"

#include <algorithm>
#include <bit>

#include "rules/band.h"
#include "rules/call_form.h"
#include "text/cp932.h"
#include "text/strings.h"
#include "text/utf8.h"

namespace tobarine {
namespace {

constexpr std::size_t kLongestFreq = 7;  // bytes
constexpr std::size_t kLongestHamlogMode = 3;

// A value of these reaches the outputs of every run.
constexpr std::uint64_t kAlwaysCount = bit(kCall) | bit(kFreq) | bit(kRstSent) | bit(kRstRcvd) |
                                       bit(kQslVia) | bit(kDxcc) | bit(kQsoDate) | bit(kTimeOn4) |
                                       bit(kTimeOn6) | bit(kJcc) | bit(kJcg);
// These as far as there are remarks, and these in a contest log.
constexpr std::uint64_t kInRemarks = bit(kCnty) | bit(kIota);
constexpr std::uint64_t kInContest =
    bit(kAge) | bit(kBand) | bit(kSection) | bit(kSrx) | bit(kStx) | bit(kOperator);

// What stands in front of a value and is taken out of the field wherever it stands: everything up
// to the first ">". For names, places and comments as many bytes are taken as there are characters,
// which is the same unless something full-width stands in front.
std::string tag_text(std::string_view field, bool counted_in_bytes) {
  const std::size_t end = field.find('>');
  if (end == std::string_view::npos) return {};
  const std::string_view text = field.substr(0, end + 1);
  if (!counted_in_bytes || is_ascii(text)) return std::string(text);
  return from_cp932(to_cp932(field).substr(0, char_count(text)));
}

// yyyymmdd to "YYYY/MM/DD", hhmm.. to "HH:MM", by position, whatever the characters are.
void set_date(std::string_view d, std::string& result) {
  if (d.size() == 8 && is_ascii(d)) {
    const char date[] = {d[0], d[1], d[2], d[3], '/', d[4], d[5], '/', d[6], d[7]};
    result.assign(date, sizeof date);
    return;
  }
  result.assign(left_chars(d, 4)).append("/").append(mid_chars(d, 4, 2));
  result.append("/").append(right_chars(d, 2));
}

void set_time(std::string_view t, std::string& result) {
  result.assign(left_chars(t, 2)).append(":").append(mid_chars(t, 2, 2));
}

// Everything that a record does not inherit from the one before it.
void reset(QsoRecord& r) {
  for (std::string QsoRecord::*field : {&QsoRecord::freq,
                                        &QsoRecord::mode,
                                        &QsoRecord::code,
                                        &QsoRecord::grid,
                                        &QsoRecord::qsl,
                                        &QsoRecord::name,
                                        &QsoRecord::qth,
                                        &QsoRecord::rmks1,
                                        &QsoRecord::rmks2,
                                        &QsoRecord::band,
                                        &QsoRecord::dxcc,
                                        &QsoRecord::jcc,
                                        &QsoRecord::jcg,
                                        &QsoRecord::state,
                                        &QsoRecord::iota,
                                        &QsoRecord::qsl_via,
                                        &QsoRecord::age,
                                        &QsoRecord::cqz,
                                        &QsoRecord::ituz,
                                        &QsoRecord::cnty,
                                        &QsoRecord::date8,
                                        &QsoRecord::time6,
                                        &QsoRecord::section,
                                        &QsoRecord::srx,
                                        &QsoRecord::stx,
                                        &QsoRecord::operator_call,
                                        &QsoRecord::n1mm_exchange1,
                                        &QsoRecord::n1mm_points,
                                        &QsoRecord::n1mm_radio_nr,
                                        &QsoRecord::adif_freq,
                                        &QsoRecord::adif_mode,
                                        &QsoRecord::station_call,
                                        &QsoRecord::contest_id,
                                        &QsoRecord::band_remark,
                                        &QsoRecord::band_remark_pos}) {
    (r.*field).clear();
  }
  r.qsl = "   ";
}

}  // namespace

// Splits the text at every "<" and looks for tags, all in one pass: a file has many short fields.
void AdifParser::read_fields(std::string_view text, QsoRecord& r) {
  std::size_t begin = 0;
  field_ = {};
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    if (c != '<' && c != ':' && c != '>') continue;
    if (c == '<') {
      field_.text = text.substr(begin, i - begin);
      read_field(r);
      field_ = {};
      begin = i + 1;
    } else if (c == ':' && i > begin) {
      const char behind = i + 1 < text.size() ? text[i + 1] : '\0';
      const TagMatch found = tags_at(text.substr(begin, i - begin), behind);
      field_.match.tags |= found.tags;
      field_.match.own |= found.own;
      field_.match.odd_length = field_.match.odd_length || found.odd_length;
    } else if (c == '>') {
      field_.more_ends = field_.value != 0;
      if (field_.value == 0) field_.value = i + 1 - begin;
    }
  }
  field_.text = text.substr(begin);
  read_field(r);
}

void AdifParser::read_field(QsoRecord& r) {
  if (field_.match.odd_length && odd_tag_.empty()) odd_tag_ = field_.text;
  if (field_.match.tags == 0 && mode_settled_) return;
  tags_seen_ |= field_.match.tags;
  own_seen_ |= field_.match.own;
  for (std::uint64_t tags = field_.match.tags; tags != 0; tags &= tags - 1) {
    set_field(static_cast<std::size_t>(std::countr_zero(tags)), r);
  }
  derive(field_.match.tags, r);
}

// The value of the field; points into it or into scratch_.
std::string_view AdifParser::field_value(bool counted_in_bytes) {
  const std::string_view field = field_.text;
  if (field_.value == 0) return field;
  const bool plain = !counted_in_bytes || is_ascii(field.substr(0, field_.value));
  if (plain && !field_.more_ends) return field.substr(field_.value);  // nothing to take out of it
  scratch_ = field;
  const std::string taken = tag_text(field, counted_in_bytes);
  if (!taken.empty()) replace_all(scratch_, taken, "");
  return scratch_;
}

void AdifParser::set_field(std::size_t tag, QsoRecord& r) {
  std::string_view value = field_value(tag == kName || tag == kQth || tag == kComment);
  if (tag != kCall && tag != kAge && tag != kMode) value = trim(value);
  const bool is_time = tag == kTimeOn4 || tag == kTimeOn6;
  if (is_time) value = left_chars(value, 4);
  std::string* target = is_time ? &r.time_on : nullptr;
  if (kTags[tag].field != nullptr) target = &(r.*kTags[tag].field);
  if (target != nullptr) {
    const std::string_view prefix = kTags[tag].prefix;
    watch(tag, std::string_view(*target).substr(std::min(prefix.size(), target->size())), value);
    target->assign(prefix).append(value);
  }
  const bool own = (field_.match.own & bit(tag)) != 0;
  if (own && (tag >= kNotes || (tag == kComment && !use_.comment)) && !value.empty()) {
    not_carried_.append(not_carried_.empty() ? "" : ", ").append(kTags[tag].name);
    not_carried_.append("=").append(value);
  }
  switch (tag) {
    case kFreq:
      r.adif_freq = value;
      cut_freq(value, r);
      break;
    case kMode:
      r.adif_mode = trim(value);
      break;
    case kQslVia:
    case kQslSent:
    case kQslRcvd:
      set_qsl(tag, value, r);
      break;
    case kQsoDate:
      set_date(value, r.date);
      break;
    case kTimeOn4:
    case kTimeOn6:
      set_time(value, r.time);
      break;
    case kJcc:
    case kJcg:
      r.code = value;
      break;
    case kQsoDate8:
      set_date(value, r.date8);
      break;
    case kTime6:
      set_time(value, r.time6);
      break;
    case kExchange1:  // N1MM's exchange carries the JCC or JCG number
      r.jcc = value;
      break;
    case kSubmode:
      submode_ = value;
      break;
    default:
      break;
  }
}

// LOTW_QSL_SENT and the like count as QSL_SENT, too.
void AdifParser::set_qsl(std::size_t tag, std::string_view value, QsoRecord& r) {
  if ((field_.match.own & bit(tag)) == 0) foreign_fields_[tag] = field_.text;
  const auto set = [&](std::string& qsl) {
    if (tag == kQslVia || (tag == kQslSent && value == "Y")) qsl[0] = 'J';
    if (tag != kQslVia) qsl[tag == kQslSent ? 1 : 2] = value == "Y" ? '*' : ' ';
  };
  set(r.qsl);
  if ((field_.match.own & bit(tag)) != 0) set(own_qsl_);
}

// Remembers what the report needs to know of a value that is about to take the place of another.
void AdifParser::watch(std::size_t tag, std::string_view before, std::string_view value) {
  if ((field_.match.own & bit(tag)) != 0) {
    foreign_ &= ~bit(tag);
  } else if (before != value) {
    foreign_ |= bit(tag);
    foreign_fields_[tag] = field_.text;
  }
}

// Hamlog's column holds seven characters.
void AdifParser::cut_freq(std::string_view value, QsoRecord& r) {
  if (cp932_length(value) <= kLongestFreq) return;
  r.freq = left_chars(value, kLongestFreq);
  // Zeros at the end are no loss.
  if (value.find_first_not_of('0', r.freq.size()) != std::string_view::npos) cut_value_ = value;
}

// After every field: what a later tag says outright replaces what was derived. The band is looked
// at only when the field changed something, the mode until the table changes it no more.
void AdifParser::derive(std::uint64_t found, QsoRecord& r) {
  if ((found & (bit(kFreq) | bit(kBand))) != 0) {
    if (is_blank(r.freq)) {
      if (!is_blank(r.band)) hamlog_freq_from_band(bands_, r);
    } else if (is_blank(r.band)) {
      r.band = band_from_freq(r.freq);
    }
  }
  if ((found & bit(kMode)) != 0) mode_settled_ = false;
  if (mode_settled_) return;
  scratch_ = r.mode;
  if (cp932_length(r.mode) > kLongestHamlogMode) modes_.adif_to_csv(r.mode);
  mode_settled_ = scratch_ == r.mode;
}

void AdifParser::build_remarks(QsoRecord& r) const {
  if (!is_blank(r.jcg) || !is_blank(r.jcc) || trim(r.dxcc) == "339") {
    r.cqz.clear();
    r.ituz.clear();
  }
  r.rmks1.assign(r.qsl_via).append(" ").append(r.iota).append(" ").append(r.cqz);
  r.rmks1.append(" ").append(r.ituz);
  r.rmks2 = r.cnty;
  if (remarks_.write_state) {
    const std::string state = (remarks_.state_prefixed ? remarks_.state_prefix : "") + r.state;
    if (remarks_.emptied()) {
      r.rmks1.clear();
      r.rmks2.clear();
    } else if (!is_blank(r.state) && remarks_.state_place == 0) {
      r.rmks1 += " " + state;
    } else if (!is_blank(r.state)) {
      // Without the prefix the state comes first, with it last: an old habit that stays.
      r.rmks2 = remarks_.state_prefixed ? r.cnty + " " + state : state + " " + r.cnty;
    }
  }
  trim_in_place(r.rmks1);
  trim_in_place(r.rmks2);
  if (r.band_remark.empty()) return;
  const auto place = [&r](std::string& rmks, bool before) {
    rmks = before ? r.band_remark + " " + rmks : rmks + " " + r.band_remark;
    trim_in_place(rmks);
  };
  if (r.band_remark_pos == "1") place(r.rmks1, true);
  if (r.band_remark_pos == "2") place(r.rmks1, false);
  if (r.band_remark_pos == "3") place(r.rmks2, true);
  if (r.band_remark_pos == "4") place(r.rmks2, false);
}

void AdifParser::report(std::size_t line, const QsoRecord& r, FindingLog& findings) const {
  const struct {
    std::uint64_t tags;
    const char* name;
    const std::string& value;
  } inherited[] = {
      {bit(kCall), "CALL", r.call},
      {bit(kQsoDate), "QSO_DATE", r.qso_date},
      {bit(kTimeOn4) | bit(kTimeOn6), "TIME_ON", r.time_on},
      {bit(kRstSent), "RST_SENT", r.his_rst},
      {bit(kRstRcvd), "RST_RCVD", r.my_rst},
  };
  std::string names;
  for (const auto& field : inherited) {
    if ((tags_seen_ & field.tags) != 0 || field.value.empty()) continue;
    names.append(names.empty() ? "" : ", ").append(field.name);
  }
  if (!names.empty()) findings.add(FindingKind::kCarriedOver, line, r.call, names);
  if (!odd_tag_.empty()) findings.add(FindingKind::kOddTagLength, line, r.call, "<" + odd_tag_);
  if (!cut_value_.empty()) findings.add(FindingKind::kValueCut, line, r.call, cut_value_);
  if (!not_carried_.empty()) findings.add(FindingKind::kNotCarried, line, r.call, not_carried_);
  report_mode(line, r, findings);
  report_foreign(line, r, findings);
  if (!has_call()) return;
  if (const std::string_view oddity = call_oddity(trim(r.call)); !oddity.empty()) {
    findings.add(FindingKind::kOddCall, line, r.call, oddity);
  }
}

void AdifParser::report_mode(std::size_t line, const QsoRecord& r, FindingLog& findings) const {
  if (is_blank(r.mode) && has_call()) findings.add(FindingKind::kNoMode, line, r.call, submode_);
  if (cp932_length(trim(r.mode)) > kLongestHamlogMode) {
    findings.add(FindingKind::kUnknownMode, line, r.call, r.mode);
  }
  if (submode_.empty() || is_blank(r.mode)) return;
  const std::string submode = upper(submode_);
  if (submode == "USB" || submode == "LSB" || submode == upper(trim(r.mode))) return;
  findings.add(FindingKind::kSubmodeIgnored, line, r.call, submode_ + " -> " + r.mode);
}

// The tags whose value another field has set, as far as that is seen in the outputs.
std::uint64_t AdifParser::foreign_that_count(const QsoRecord& r) const {
  std::uint64_t tags = kAlwaysCount;
  if (use_.contest) tags |= kInContest;
  if (use_.comment) tags |= bit(kComment);
  if (use_.qth) tags |= bit(kQth);
  if (is_blank(r.adif_freq)) tags |= bit(kBand);
  if (!remarks_.emptied()) {
    tags |= kInRemarks;
    if (remarks_.write_state) tags |= bit(kState);
    if (!r.cqz.empty()) tags |= bit(kCqz);
    if (!r.ituz.empty()) tags |= bit(kItuz);
  }
  return foreign_ & tags;
}

void AdifParser::report_foreign(std::size_t line, const QsoRecord& r, FindingLog& findings) const {
  const auto origin = [this](std::size_t tag) {
    return " ← <" + std::string(trim(left_chars(foreign_fields_[tag], FindingLog::kLongestText)));
  };
  std::string texts;
  for (std::uint64_t tags = foreign_that_count(r); tags != 0; tags &= tags - 1) {
    const auto tag = static_cast<std::size_t>(std::countr_zero(tags));
    texts.append(texts.empty() ? "" : ", ").append(kTags[tag].name).append(origin(tag));
  }
  if (!texts.empty()) findings.add(FindingKind::kForeignTag, line, r.call, texts);
  if (r.qsl == own_qsl_) return;
  for (const std::size_t tag : {kQslSent, kQslRcvd, kQslVia}) {
    if (foreign_fields_[tag].empty()) continue;
    findings.add(FindingKind::kForeignMarks, line, r.call, "「" + r.qsl + "」" + origin(tag));
    return;
  }
}

void AdifParser::parse(const std::string& text, std::size_t line, QsoRecord& r,
                       FindingLog& findings) {
  reset(r);
  tags_seen_ = own_seen_ = foreign_ = 0;
  foreign_fields_[kQslSent] = foreign_fields_[kQslRcvd] = foreign_fields_[kQslVia] = {};
  own_qsl_ = r.qsl;
  for (std::string* kept : {&odd_tag_, &cut_value_, &submode_, &not_carried_}) kept->clear();
  mode_settled_ = true;
  read_fields(text, r);
  build_remarks(r);
  report(line, r, findings);
}

}  // namespace tobarine
