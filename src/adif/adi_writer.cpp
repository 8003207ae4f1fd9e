#include "adif/adi_writer.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "adif/value_check.h"
#include "log/frequency.h"
#include "log/mode.h"
#include "rules/version.h"
#include "text/cp932.h"
#include "text/strings.h"
#include "text/utf8.h"

namespace tobarine {
namespace {

constexpr std::string_view kAside = "APP_TOBARINE_";

// What every reader looks for first, in this order; the others follow as the contact has them.
constexpr auto kFirst = std::to_array<Field>(
    {Field::kCall, Field::kQsoDate, Field::kTimeOn, Field::kQsoDateOff, Field::kTimeOff,
     Field::kBand, Field::kFreq, Field::kBandRx, Field::kFreqRx, Field::kMode, Field::kSubmode,
     Field::kPropMode, Field::kSatName, Field::kRstSent, Field::kRstRcvd, Field::kGridsquare,
     Field::kDxcc, Field::kState, Field::kCnty});

void append_number(std::string& text, std::size_t number) {
  std::array<char, 20> digits{};
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
  text.append(digits.data(), end);
}

void append_field(std::string& text, std::string_view name, std::string_view value) {
  text += '<';
  text += name;
  text += ':';
  append_number(text, value.size());
  text += '>';
  text += value;
  text += ' ';
}

// ASCII's own form of a character: full-width Latin letters, digits and signs, the ideographic
// blank; 0 when it has none.
char ascii_form(char32_t c) {
  if (c < 0x80) return static_cast<char>(c);
  if (c >= 0xFF01 && c <= 0xFF5E) return static_cast<char>(c - 0xFF01 + 0x21);
  return c == 0x3000 ? ' ' : '\0';
}

// The text in ASCII; false when a character has no form there.
bool to_ascii(std::string_view text, std::string& ascii) {
  ascii.clear();
  while (!text.empty()) {
    const Utf8Char c = next_utf8(text);
    const char form = c.valid ? ascii_form(c.code_point) : '\0';
    if (form == '\0') return false;
    ascii += form;
    text.remove_prefix(c.size);
  }
  return true;
}

}  // namespace

AdiWriter::AdiWriter(OutputFile& file, AdiEncoding encoding, std::string_view created)
    : file_(file), encoding_(encoding) {
  std::string& out = file_.buffer();
  out += "ADIF log written by Tobarine\r\n";
  append_field(out, "ADIF_VER", "3.1.6");
  append_field(out, "PROGRAMID", "Tobarine");
  append_field(out, "PROGRAMVERSION", kVersion);
  append_field(out, "CREATED_TIMESTAMP", created);
  out += "<EOH>\r\n";
  file_.end_record();
}

void AdiWriter::put_field(std::string_view name, std::string_view value) {
  append_field(is_ascii(value) ? file_.buffer() : late_, name, value);
}

void AdiWriter::put_encodable(std::string_view name, std::string_view value, const Contact& contact,
                              FindingLog& findings) {
  if (is_ascii(value) || encoding_ == AdiEncoding::kUtf8) {
    put_field(name, value);
    return;
  }
  const auto report = [&](FindingKind kind) {
    findings.add(kind, contact.origin.line, contact.get(Field::kCall),
                 std::string(name) + "=" + std::string(value));
  };
  if (encoding_ == AdiEncoding::kAscii) {
    if (to_ascii(value, scratch_)) {
      put_field(name, scratch_);
    } else {
      report(FindingKind::kNotAscii);
    }
    return;
  }
  scratch_.clear();
  if (encode_cp932(value, scratch_) > 0) report(FindingKind::kNotEncodable);
  put_field(name, scratch_);
}

void AdiWriter::put_checked(Field field, std::string_view value, const Contact& contact,
                            FindingLog& findings) {
  const std::string_view name = field_name(field);
  if (is_allowed(field, value)) {
    put_encodable(name, value, contact, findings);
    return;
  }
  findings.add(FindingKind::kValueNotAllowed, contact.origin.line, contact.get(Field::kCall),
               std::string(name) + "=" + std::string(value));
  put_encodable(std::string(kAside) + std::string(name), value, contact, findings);
}

void AdiWriter::put_mode(const Contact& contact, FindingLog& findings) {
  const std::string_view mode = contact.get(Field::kMode);
  const std::string_view submode = contact.get(Field::kSubmode);
  if (mode.empty() && submode.empty()) return;
  if (const auto standard = standard_mode(mode, submode)) {
    put_field("MODE", standard->mode);
    if (!standard->submode.empty()) {
      put_encodable("SUBMODE", standard->submode, contact, findings);
    }
    return;
  }
  findings.add(FindingKind::kModeNotStandard, contact.origin.line, contact.get(Field::kCall),
               std::string(mode) + (submode.empty() ? "" : "/") + std::string(submode));
  if (!mode.empty()) put_encodable("APP_TOBARINE_MODE", mode, contact, findings);
  if (!submode.empty()) put_encodable("APP_TOBARINE_SUBMODE", submode, contact, findings);
}

void AdiWriter::put_band(const Contact& contact, FindingLog& findings) {
  const std::string_view stated = contact.get(Field::kBand);
  const std::string_view band = standard_band(stated);
  if (!band.empty()) {
    put_field("BAND", band);
  } else if (!stated.empty()) {
    put_checked(Field::kBand, stated, contact, findings);
  } else if (const auto hertz = hertz_of_mhz(contact.get(Field::kFreq))) {
    if (!band_of(*hertz).empty()) put_field("BAND", band_of(*hertz));
  }
}

bool AdiWriter::put(const Contact& contact, FindingLog& findings) {
  late_.clear();
  for (const Field field : kFirst) {
    if (field == Field::kMode) {
      put_mode(contact, findings);
    } else if (field == Field::kBand) {
      put_band(contact, findings);
    } else if (field != Field::kSubmode) {
      const std::string_view value = contact.get(field);
      if (!value.empty()) put_checked(field, value, contact, findings);
    }
  }
  for (std::size_t i = 0; i < contact.size(); ++i) {
    const Contact::Entry entry = contact[i];
    if (entry.field == Field::kOther) {
      put_encodable(entry.name, entry.value, contact, findings);
    } else if (std::ranges::find(kFirst, entry.field) == kFirst.end()) {
      put_checked(entry.field, entry.value, contact, findings);
    }
  }
  file_.buffer().append(late_).append("<EOR>\r\n");
  file_.end_record();
  return true;
}

void put_back(Contact& contact) {
  for (std::size_t i = 0; i < contact.size();) {
    const Contact::Entry entry = contact[i];
    const bool aside = entry.field == Field::kOther &&
                       equal_ignoring_case(entry.name.substr(0, kAside.size()), kAside);
    const Field field = aside ? field_of(entry.name.substr(kAside.size())) : Field::kOther;
    if (field == Field::kOther || contact.has(field)) {
      ++i;
      continue;
    }
    contact.set(field, entry.value);
    contact.set(std::string(contact[i].name), {});
  }
}

}  // namespace tobarine
