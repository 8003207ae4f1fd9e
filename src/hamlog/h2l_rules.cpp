#include "hamlog/h2l_rules.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "callsign/us_states.h"
#include "rules/adif_modes.h"
#include "rules/band.h"
#include "rules/call_form.h"
#include "rules/time_shift.h"
#include "text/cp932.h"
#include "text/strings.h"
#include "text/utf8.h"

namespace tobarine {
namespace {

constexpr std::string_view kDxMarker = "$DX";
constexpr std::string_view kFullWidthBlank = "\u3000";
constexpr double kJapaneseCodes = 500;  // the first three characters of a code, up to 500A
constexpr std::string_view kJapan = "339";

bool is_japanese_code(std::string_view code) {
  return leading_number(left_chars(code, 3)) <= kJapaneseCodes;
}

// Remarks are full of these words, which are states, too.
bool is_everyday_word(std::string_view word) {
  constexpr std::string_view kWords[] = {"DE", "IN", "ME", "OH", "OK", "OR"};
  return std::ranges::find(kWords, word) != std::end(kWords);
}

// "AS-007": a continent and three digits.
bool is_iota(std::string_view text) {
  return text.size() == 6 && text[2] == '-' && all_digits(text.substr(3));
}

// The last reference that stands in the remarks, by continents in this order, remarks 1 first.
std::string_view find_iota(std::string_view rmks1, std::string_view rmks2) {
  std::string_view iota;
  if (!contains(rmks1, "-") && !contains(rmks2, "-")) return iota;
  for (const std::string_view continent : {"EU-", "AF-", "AN-", "AS-", "NA-", "OC-", "SA-"}) {
    for (const std::string_view rmks : {rmks1, rmks2}) {
      const std::size_t at = rmks.find(continent);
      if (at != std::string_view::npos) iota = trim(left_chars(rmks.substr(at), 6));
    }
  }
  return iota;
}

// A station at sea or in the air is in no entity; this output has always told of its home.
std::string at_home(std::string_view call) {
  std::string home = upper(call);
  for (const std::string_view ending : {"/MM", "/AM"}) {
    const std::size_t at = home.find(ending);
    if (at == std::string::npos) continue;
    const std::size_t behind = at + ending.size();
    if (behind == home.size() || home[behind] == '/') home.erase(at, ending.size());
  }
  return home;
}

// A contact logged as home/place with the marker in its remarks is looked up as place/home.
std::string lookup_call(const std::string& call, bool has_marker) {
  const std::size_t slash = call.find('/');
  if (slash == std::string::npos) return call;
  if (!has_marker) return at_home(trim(call));
  const std::string suffix = call.substr(slash + 1);
  if (suffix == "MM" || suffix == "P" || contains(suffix, "QRP")) return at_home(trim(call));
  return suffix + "/" + call.substr(0, slash);
}

void collapse_blanks(std::string& text) {
  replace_all(text, kFullWidthBlank, " ");
  for (int pass = 0; pass < 6; ++pass) replace_all(text, "  ", " ");
}

// The first accepted two characters behind an occurrence of the keyword. An empty keyword occurs
// nowhere.
std::string state_behind_keyword(std::string_view text, std::string_view keyword,
                                 std::string_view entity_prefix) {
  if (keyword.empty()) return {};
  for (std::size_t at = text.find(keyword); at != std::string_view::npos;
       at = text.find(keyword, at + 1)) {
    std::string candidate(left_chars(text.substr(at + keyword.size()), 2));
    replace_all(candidate, " ", "");
    if (is_state_of(entity_prefix, candidate)) return candidate;
  }
  return {};
}

struct StateWord {
  std::string state;  // the first word that is one
  bool doubtful = false;
};

// An everyday word is a state like any other, as it always was, but a doubtful one unless it stands
// alone or behind a comma ("Tulsa, OK").
StateWord state_as_word(std::string_view text, std::string_view entity_prefix) {
  StateWord found;
  std::string_view before;
  for_each_piece(text, ' ', [&](std::string_view word) {
    if (found.state.empty() && is_state_of(entity_prefix, word)) {
      found.state = word;
      found.doubtful = is_everyday_word(word) && word != text && !before.ends_with(',');
    }
    before = word;
  });
  return found;
}

}  // namespace

bool asks_for_calls(const H2lOptions& options, AdifTarget target) {
  return options.write_state || (options.write_qth && target == AdifTarget::kLogger32);
}

H2lRules::H2lRules(H2lOptions options, const H2lTables& tables, AdifTarget target)
    : options_(std::move(options)),
      tables_(tables),
      target_(target),
      state_keyword_(upper(trim(options_.state_keyword))) {}

bool H2lRules::apply(AdifContact& contact, std::size_t line, FindingLog& findings) {
  QsoRecord& r = contact.record;
  if (is_left_out(r, line, findings)) return false;
  const auto kept = [](const std::string& rmks, bool use, bool keep_full_width) {
    return use && (keep_full_width || !has_full_width(rmks)) ? std::string_view(rmks)
                                                             : std::string_view();
  };
  const std::string_view kept1 = kept(r.rmks1, options_.use_rmks1, options_.keep_full_width_rmks1);
  const std::string_view kept2 = kept(r.rmks2, options_.use_rmks2, options_.keep_full_width_rmks2);
  r.iota = find_iota(kept1, kept2);
  derive_comment(r, kept1, kept2);
  derive_place(r, kept1, kept2, line, findings);
  derive_codes(r, line, findings);
  derive_band_and_mode(contact, line, findings);
  derive_qsl(r, line, findings);
  derive_time(r, line, findings);
  contact.name_written = options_.write_name && !has_full_width(r.name);
  if (contact.name_written) trim_in_place(r.name);
  report_doubts(contact, line, findings);
  return true;
}

void H2lRules::report_doubts(const AdifContact& contact, std::size_t line, FindingLog& findings) {
  const QsoRecord& r = contact.record;
  if (const std::string_view oddity = call_oddity(r.call); !oddity.empty()) {
    findings.add(FindingKind::kOddCall, line, r.call, oddity);
  }
  const bool logger32 = target_ == AdifTarget::kLogger32;
  if (logger32 && !r.iota.empty() && !is_iota(r.iota)) {
    findings.add(FindingKind::kOddIota, line, r.call, r.iota);
  }
  if (!r.qsl_via.empty() && !call_oddity(r.qsl_via).empty()) {
    findings.add(FindingKind::kOddManager, line, r.call, r.qsl_via);
  }
  const auto report_kana = [&](std::string_view tag, const std::string& value) {
    if (is_ascii(value) || !has_half_width_kana(value)) return;
    findings.add(FindingKind::kHalfWidthKana, line, r.call, std::string(tag) + " " + value);
  };
  report_kana("COMMENT", r.comment);
  if (logger32 && contact.name_written) report_kana("NAME", r.name);
  if (r.qso_date.empty() || r.time_on.empty()) return;
  const std::size_t same =
      duplicates_.find_or_add(r.call, r.band, r.adif_mode, r.qso_date, r.time_on, line);
  if (same > 0) {
    findings.add(FindingKind::kDuplicate, line, r.call, "No." + std::to_string(same) + " と同じ");
  }
}

bool H2lRules::is_left_out(const QsoRecord& r, std::size_t line, FindingLog& findings) const {
  if (options_.leave_out_japanese_codes) {
    if (!is_japanese_code(r.code)) return false;
    findings.add(FindingKind::kLeftOutByCode, line, r.call, r.code);
    return true;
  }
  if (!options_.leave_out_jst || contains(r.time_on, "U")) return false;
  findings.add(FindingKind::kLeftOutByJst, line, r.call, r.time);
  return true;
}

void H2lRules::derive_comment(QsoRecord& r, std::string_view kept1, std::string_view kept2) const {
  std::string& comment = r.comment;
  comment.assign(kept1).append("  ").append(kept2);
  trim_in_place(comment);
  const bool eqsl = target_ == AdifTarget::kEqsl;
  if (eqsl && options_.slash_call_in_comment && contains(r.call, "/")) {
    comment.insert(0, "UR " + r.call + " ");
  }
  replace_all(comment, kDxMarker, "");
  trim_in_place(comment);
  if (eqsl || !options_.dx_marker_in_comment) return;
  // The marker has always gone to the end of the comment, with no blank before it.
  if (contains(r.rmks1, kDxMarker) || contains(r.rmks2, kDxMarker)) comment += kDxMarker;
}

void H2lRules::derive_place(QsoRecord& r, std::string_view kept1, std::string_view kept2,
                            std::size_t line, FindingLog& findings) {
  if (options_.write_qth) trim_in_place(r.qth);
  const bool qth_wanted = options_.write_qth && r.qth.empty() && target_ == AdifTarget::kLogger32;
  if (!options_.write_state && !qth_wanted) return;
  const bool marked = contains(kept1, kDxMarker) || contains(kept2, kDxMarker);
  const CallPlace place = tables_.calls.find(lookup_call(r.call, marked), r.qso_date);
  if (qth_wanted) r.qth = place.qth();
  if (options_.write_state && has_states(place.prefix())) {
    r.state = find_state(r, place.prefix(), line, findings);
  }
}

std::string H2lRules::find_state(const QsoRecord& r, std::string_view entity_prefix,
                                 std::size_t line, FindingLog& findings) {
  bool doubtful = false;
  const auto search = [&](const std::string& rmks) {
    upper_into(rmks, upper_remarks_);
    collapse_blanks(upper_remarks_);
    const std::string_view text = trim(upper_remarks_);
    std::string state;
    if (options_.state_search != StateSearch::kWord) {
      state = state_behind_keyword(text, state_keyword_, entity_prefix);
    }
    if (state.empty() && options_.state_search != StateSearch::kKeyword) {
      StateWord found = state_as_word(text, entity_prefix);
      state = std::move(found.state);
      doubtful = found.doubtful;
    }
    return state;
  };
  std::string state;
  if (options_.state_remarks != StateRemarks::kRmks2) state = search(r.rmks1);
  if (state.empty() && options_.state_remarks != StateRemarks::kRmks1) state = search(r.rmks2);
  if (doubtful) findings.add(FindingKind::kDoubtfulState, line, r.call, state);
  return state;
}

void H2lRules::derive_codes(QsoRecord& r, std::size_t line, FindingLog& findings) const {
  if (is_blank(r.code)) return;
  if (leading_number(left_chars(r.code, 1)) < 5) {
    const std::size_t length = char_count(r.code);
    if (length == 4) r.jcc = r.code;
    if (length > 4) r.jcg = r.code;
    if (length < 4 && all_digits(r.code)) {
      findings.add(FindingKind::kOddCode, line, r.call, r.code);
    }
  }
  r.dxcc = tables_.codes.find(r.code);
  if (std::string_view(r.dxcc) != "0") return;
  if (is_japanese_code(r.code)) {
    r.dxcc = kJapan;
  } else {
    findings.add(FindingKind::kUnknownCode, line, r.call, r.code);
  }
}

const H2lRules::AdifMode& H2lRules::adif_mode(const std::string& mode) {
  constexpr std::size_t kMostModes = 100;  // a log of garbage must not fill the memory
  for (const AdifMode& met : modes_) {
    if (met.as_read == mode) return met;
  }
  if (modes_.size() == kMostModes) modes_.clear();
  AdifMode result{mode, mode, false};
  result.known = tables_.modes.csv_to_adif(result.name) || is_adif_mode(mode);
  modes_.push_back(std::move(result));
  return modes_.back();
}

void H2lRules::derive_band_and_mode(AdifContact& contact, std::size_t line, FindingLog& findings) {
  QsoRecord& r = contact.record;
  if (r.freq.ends_with('.')) r.freq.pop_back();
  const std::string_view freq = r.freq;
  const HamlogBand band =
      band_for_adif(tables_.bands, freq.substr(0, freq.find('.')), r.rmks1, r.rmks2);
  r.band = band.name;
  contact.band_only = band.from_remark;
  if (band.name.empty()) {
    findings.add(FindingKind::kNoBand, line, r.call, freq);
  } else if (!band.from_remark && freq.find_first_of("Gg") != std::string_view::npos) {
    findings.add(FindingKind::kGigahertzText, line, r.call, r.freq + " -> " + r.band);
  } else if (contains(freq, "/")) {
    findings.add(FindingKind::kTwoFrequencies, line, r.call, r.freq + " -> " + r.band);
  }
  const AdifMode& mode = adif_mode(r.mode);
  r.adif_mode = mode.name;
  if (is_blank(r.mode)) {
    findings.add(FindingKind::kNoMode, line, r.call, "");
  } else if (!mode.known) {
    findings.add(FindingKind::kUnknownMode, line, r.call, r.mode);
  }
}

void H2lRules::derive_qsl(QsoRecord& r, std::size_t line, FindingLog& findings) {
  std::string_view rest = r.qsl;
  const auto next = [&rest] {
    const std::string_view character = left_chars(rest, 1);
    rest.remove_prefix(character.size());
    return character;
  };
  const std::string_view route = next();
  r.qsl_sent = is_blank(next()) ? 'N' : 'Y';
  r.qsl_rcvd = is_blank(next()) ? 'N' : 'Y';
  if (route != "M" || target_ == AdifTarget::kEqsl) return;
  upper_into(r.rmks1 + "  " + r.rmks2, upper_remarks_);
  const std::string_view remarks = trim(upper_remarks_);
  if (const std::size_t at = remarks.find('@'); at != std::string_view::npos) {
    const std::string_view manager = trim(left_chars(remarks.substr(at + 1), 10));
    r.qsl_via = manager.substr(0, manager.find(' '));
  }
  if (r.qsl_via.empty()) findings.add(FindingKind::kNoQslManager, line, r.call, "");
}

void H2lRules::derive_time(QsoRecord& r, std::size_t line, FindingLog& findings) const {
  const bool jst = contains(r.time_on, "J");
  if (!jst && !contains(r.time_on, "U")) {
    findings.add(FindingKind::kNoZoneLetter, line, r.call, r.time);
  }
  if (jst) {
    if (auto utc = shift_jst_to_utc(r.qso_date, r.time_on)) {
      r.qso_date = std::move(utc->date);
      r.time_on = std::move(utc->time);
      return;
    }
  } else if (is_date_and_time(r.qso_date, r.time_on)) {
    return;
  }
  const bool no_such_day =
      r.qso_date.size() == 8 && all_digits(r.qso_date) && !is_date_and_time(r.qso_date, "0000");
  findings.add(no_such_day ? FindingKind::kImpossibleDay : FindingKind::kBadDateOrTime, line,
               r.call, r.date + " " + r.time);
}

}  // namespace tobarine
