#include "hamlog/adif_parser.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <iterator>
#include <vector>

#include "rules/band.h"
#include "text/cp932.h"
#include "text/strings.h"
#include "text/utf8.h"

namespace tobarine {
namespace {

constexpr std::size_t kLongestFreq = 7;  // bytes
constexpr std::size_t kLongestHamlogMode = 3;

// A tag is recognised by its name, a colon and, for some, the length behind it. Its value goes into
// a field behind a prefix; what else it does stands in AdifParser::set_field(). The order counts: a
// field of the file may match several tags, and the later ones win.
struct Tag {
  enum Place { kAnywhere, kAtStart };
  std::string_view name;
  std::string QsoRecord::*field;
  std::string_view prefix = {};
  char length = '\0';
  Place place = kAnywhere;
};

constexpr Tag kTags[] = {
    {"CALL", &QsoRecord::call},
    {"AGE", &QsoRecord::age},
    {"NAME", &QsoRecord::name, "", '\0', Tag::kAtStart},
    {"QTH", &QsoRecord::qth},
    {"FREQ", &QsoRecord::freq},
    {"BAND", &QsoRecord::band},
    {"RST_SENT", &QsoRecord::his_rst},
    {"RST_RCVD", &QsoRecord::my_rst},
    {"MODE", &QsoRecord::mode, "", '\0', Tag::kAtStart},
    {"CQZ", &QsoRecord::cqz, "CQZ:"},
    {"ITUZ", &QsoRecord::ituz, "ITUZ:"},
    {"STATE", &QsoRecord::state},
    {"CNTY", &QsoRecord::cnty, "CNTY:"},
    {"QSL_VIA", &QsoRecord::qsl_via, "@"},
    {"QSL_SENT", &QsoRecord::qsl_sent},
    {"QSL_RCVD", nullptr},
    {"GRIDSQUARE", &QsoRecord::grid, "", '\0', Tag::kAtStart},
    {"COMMENT", &QsoRecord::comment},
    {"IOTA", &QsoRecord::iota},
    {"DXCC", &QsoRecord::dxcc},
    {"QSO_DATE", &QsoRecord::qso_date},
    {"TIME_ON", nullptr, "", '4'},
    {"TIME_ON", nullptr, "", '6'},
    {"JCC", &QsoRecord::jcc},
    {"JCG", &QsoRecord::jcg},
    {"QSO_DATE", nullptr, "", '8'},
    {"TIME_ON", nullptr, "", '6'},
    {"SECTION", &QsoRecord::section},
    {"SRX", &QsoRecord::srx},
    {"STX", &QsoRecord::stx},
    {"OPERATOR", &QsoRecord::operator_call},
    {"APP_N1MM_EXCHANGE1", &QsoRecord::n1mm_exchange1},
    {"APP_N1MM_POINTS", &QsoRecord::n1mm_points},
    {"APP_N1MM_RADIO_NR", &QsoRecord::n1mm_radio_nr},
    {"STATION_CALLSIGN", &QsoRecord::station_call, "", '\0', Tag::kAtStart},
    {"CONTEST_ID", &QsoRecord::contest_id, "", '\0', Tag::kAtStart},
};
// The rows that the code names.
enum TagIndex : std::size_t {
  kCall = 0,
  kAge = 1,
  kName = 2,
  kQth = 3,
  kFreq = 4,
  kBand = 5,
  kRstSent = 6,
  kRstRcvd = 7,
  kMode = 8,
  kQslVia = 13,
  kQslSent = 14,
  kQslRcvd = 15,
  kComment = 17,
  kQsoDate = 20,
  kTimeOn4 = 21,
  kTimeOn6 = 22,
  kJcc = 23,
  kJcg = 24,
  kQsoDate8 = 25,
  kTime6 = 26,
  kExchange1 = 31,
};
static_assert(kTags[kMode].name == "MODE" && kTags[kQslRcvd].name == "QSL_RCVD" &&
              kTags[kComment].name == "COMMENT" && kTags[kQsoDate].name == "QSO_DATE" &&
              kTags[kJcg].name == "JCG" && kTags[kExchange1].name == "APP_N1MM_EXCHANGE1");

constexpr std::uint64_t bit(std::size_t tag) {
  return std::uint64_t{1} << tag;
}

// The last eight characters before a colon in one number, letters in upper case, so that most names
// are told apart by one comparison. Other characters may fall together; a match is looked at again.
static_assert(std::endian::native == std::endian::little);
std::uint64_t packed_end(std::string_view text) {
  std::uint64_t packed = 0;
  if (text.size() >= sizeof packed) {
    std::memcpy(&packed, text.data() + text.size() - sizeof packed, sizeof packed);
  } else {
    std::memcpy(reinterpret_cast<char*>(&packed) + sizeof packed - text.size(), text.data(),
                text.size());
  }
  return packed & 0xDFDFDFDFDFDFDFDFU;
}

struct PackedTag {
  std::uint64_t end;
  std::uint64_t mask;  // of the characters that count
  std::size_t tag;
};

// The tags by the last character of their names.
using PackedTags = std::array<std::vector<PackedTag>, 256>;

std::size_t last_of(std::uint64_t packed) {
  return packed >> 56;
}

PackedTags pack_tags() {
  PackedTags result;
  for (std::size_t i = 0; i < std::size(kTags); ++i) {
    const std::size_t used = std::min<std::size_t>(kTags[i].name.size(), 8);
    const std::uint64_t end = packed_end(kTags[i].name);
    result[last_of(end)].push_back({end, packed_end(std::string(used, '\xFF')), i});
  }
  return result;
}

// NOLINTNEXTLINE(cert-err58-cpp): without memory at its start the program cannot do anything
const PackedTags kPackedTags = pack_tags();

bool ends_with_name(std::string_view head, std::string_view name) {
  if (head.size() < name.size()) return false;
  const std::string_view end = head.substr(head.size() - name.size());
  return end == name || equal_ignoring_case(end, name);
}

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

// The tags whose name ends at a colon with `head` before it in the field, as bits.
std::uint64_t AdifParser::tags_at(std::string_view head, char behind) {
  std::uint64_t found = 0;
  const std::uint64_t end = packed_end(head);
  for (const PackedTag& packed : kPackedTags[last_of(end)]) {
    if ((end & packed.mask) != packed.end) continue;
    const std::size_t i = packed.tag;
    const Tag& tag = kTags[i];
    if (!ends_with_name(head, tag.name)) continue;
    if (tag.place == Tag::kAtStart && head.size() != tag.name.size()) continue;
    if (tag.length == '\0' || tag.length == behind) found |= bit(i);
    const bool odd_time = i == kTimeOn4 && behind != '4' && behind != '6';
    const bool odd_date = i == kQsoDate && behind != '8';
    field_.odd_length = field_.odd_length || odd_time || odd_date;
  }
  return found;
}

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
      field_.tags |= tags_at(text.substr(begin, i - begin), behind);
    } else if (c == '>') {
      field_.more_ends = field_.value != 0;
      if (field_.value == 0) field_.value = i + 1 - begin;
    }
  }
  field_.text = text.substr(begin);
  read_field(r);
}

void AdifParser::read_field(QsoRecord& r) {
  if (field_.odd_length && odd_tag_.empty()) odd_tag_ = field_.text;
  if (field_.tags == 0 && mode_settled_) return;
  tags_seen_ |= field_.tags;
  for (std::uint64_t tags = field_.tags; tags != 0; tags &= tags - 1) {
    set_field(static_cast<std::size_t>(std::countr_zero(tags)), r);
  }
  derive(field_.tags, r);
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
  if (kTags[tag].field != nullptr) {
    std::string& target = r.*kTags[tag].field;
    if (kTags[tag].prefix.empty()) {
      target = value;
    } else {
      target.assign(kTags[tag].prefix).append(value);
    }
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
      r.qsl[0] = 'J';
      break;
    case kQslSent:
      if (value == "Y") r.qsl[0] = 'J';
      r.qsl[1] = value == "Y" ? '*' : ' ';
      break;
    case kQslRcvd:
      r.qsl[2] = value == "Y" ? '*' : ' ';
      break;
    case kQsoDate:
      set_date(value, r.date);
      break;
    case kTimeOn4:
    case kTimeOn6:
      r.time_on = left_chars(value, 4);
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
    default:
      break;
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
  if (cp932_length(trim(r.mode)) > kLongestHamlogMode) {
    findings.add(FindingKind::kUnknownMode, line, r.call, r.mode);
  }
}

void AdifParser::parse(const std::string& text, std::size_t line, QsoRecord& r,
                       FindingLog& findings) {
  reset(r);
  tags_seen_ = 0;
  odd_tag_.clear();
  cut_value_.clear();
  mode_settled_ = true;
  read_fields(text, r);
  build_remarks(r);
  report(line, r, findings);
}

}  // namespace tobarine
