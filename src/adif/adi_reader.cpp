#include "adif/adi_reader.h"

#include <algorithm>
#include <array>

#include "text/cp932.h"
#include "text/encoding_guess.h"
#include "text/error.h"
#include "text/strings.h"
#include "text/utf8.h"

namespace tobarine {
namespace {

constexpr std::size_t kLongestName = 64;

bool is_space(char c) {
  return c == ' ' || c == '\r' || c == '\n' || c == '\t';
}

std::string_view trim_space(std::string_view text) {
  while (!text.empty() && is_space(text.front())) text.remove_prefix(1);
  while (!text.empty() && is_space(text.back())) text.remove_suffix(1);
  return text;
}

bool is_name(std::string_view text) {
  return !text.empty() && text.size() <= kLongestName && std::ranges::all_of(text, [](char c) {
    return is_digit(c) || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_' || c == '-';
  });
}

std::optional<std::size_t> number_of(std::string_view text) {
  constexpr std::size_t kMostDigits = 9;
  if (!all_digits(text) || text.size() > kMostDigits) return std::nullopt;
  std::size_t number = 0;
  for (const char c : text) number = number * 10 + static_cast<std::size_t>(c - '0');
  return number;
}

// Behind a value may stand a comment up to the line's end.
bool is_comment(std::string_view text) {
  return text.starts_with("//");
}

// The length in CP932 bytes of a UTF-8 text or the other way round, in characters, in UTF-8 bytes:
// what other programs have counted.
std::array<std::size_t, 2> other_lengths(std::string_view value, bool utf8) {
  if (utf8) return {char_count(value), cp932_length(value)};
  const std::string text = from_cp932(value);
  return {char_count(text), text.size()};
}

// Fields of a file's header; in a record they are none of the contact's.
bool is_header_field(std::string_view name) {
  constexpr auto kNames = std::to_array<std::string_view>(
      {"ADIF_VER", "CREATED_TIMESTAMP", "PROGRAMID", "PROGRAMVERSION"});
  return std::ranges::any_of(kNames, [&](auto known) { return equal_ignoring_case(known, name); });
}

}  // namespace

AdiForm look_at_adi(const std::filesystem::path& path) {
  ByteReader bytes(path);
  AdiForm form;
  EncodingGuess encoding;
  bool decided = false;  // where the records begin
  bool first = true;
  bool more = true;
  while (more || !bytes.window().empty()) {
    if (more) more = bytes.fill();
    const std::string_view window = bytes.window();
    if (first) refuse_utf16(path, window);
    first = false;
    // What stands behind the last tag or line may be cut.
    std::size_t size = more ? window.find_last_of("<\n") : window.size();
    if (size == window.npos || size == 0) {
      if (more) continue;
      size = window.size();
    }
    const std::string_view part = window.substr(0, size);
    form.blank = form.blank && trim_space(part).empty();
    encoding.see(part);
    for (std::size_t at = part.find('<'); !decided && at < part.size();
         at = part.find('<', at + 1)) {
      const std::string_view tag = part.substr(at, 6);
      const bool end = equal_ignoring_case(tag.substr(0, 5), "<EOH>");
      decided = end || equal_ignoring_case(tag, "<CALL:") || equal_ignoring_case(tag, "<CALL>");
      if (end) form.begin = bytes.consumed() + at + 5;
    }
    bytes.consume(size);
  }
  form.has_tags = decided;
  form.utf8 = encoding.utf8();
  form.maybe_utf8 = encoding.maybe_utf8();
  return form;
}

bool AdiReader::Tag::is(std::string_view mark) const {
  return size > 0 && !length && equal_ignoring_case(name, mark);
}

AdiReader::AdiReader(const std::filesystem::path& path, FindingLog& findings)
    : form_(look_at_adi(path)), bytes_(path) {
  if (!form_.has_tags && !form_.blank) {
    throw FileError(path, "ADIF ではありません (CALL も <EOH> もありません)");
  }
  if (form_.utf8) findings.add(FindingKind::kReadAsUtf8, 0, "", "");
  if (form_.maybe_utf8) findings.add(FindingKind::kMaybeUtf8, 0, "", "");
  while (bytes_.consumed() < form_.begin && reach(1)) {
    consume(static_cast<std::size_t>(
        std::min<std::uint64_t>(form_.begin - bytes_.consumed(), window().size())));
  }
  if (form_.begin == 0 && reach(kUtf8Mark.size()) && window().starts_with(kUtf8Mark)) {
    consume(kUtf8Mark.size());
  }
}

// A tag at the text's first byte, which is "<": a name, ":" and a length, perhaps ":" and a type.
AdiReader::Tag AdiReader::tag_at(std::string_view text) {
  constexpr std::size_t kLongestTag = kLongestName + 24;
  const std::size_t end = text.substr(0, kLongestTag).find('>');
  if (end == text.npos) return {};
  const std::string_view inside = text.substr(1, end - 1);
  const std::size_t colon = std::min(inside.find(':'), inside.size());
  Tag tag{trim(inside.substr(0, colon)), std::nullopt, end + 1};
  if (!is_name(tag.name)) return {};
  if (colon == inside.size()) return tag;
  const std::string_view rest = inside.substr(colon + 1);
  const std::size_t type = std::min(rest.find(':'), rest.size());
  tag.length = number_of(trim(rest.substr(0, type)));
  if (!tag.length || rest.size() - type > 3) return {};
  return tag;
}

bool AdiReader::reach(std::size_t bytes) {
  while (window().size() < bytes) {
    if (!bytes_.fill()) return false;
  }
  return true;
}

// A "<" that begins a field or a mark of the standard's; other "<" belong to the text.
std::size_t AdiReader::find_tag(std::size_t from) {
  for (;;) {
    const std::size_t at = window().find('<', from);
    if (at == std::string_view::npos) {
      from = window().size();
      if (!bytes_.fill()) return from;
      continue;
    }
    reach(at + kLongestName + 24);
    const Tag tag = tag_at(window().substr(at));
    if (tag.length || tag.is("EOR") || tag.is("EOH") || tag.is("EOF")) return at;
    if (tag.size > 0 && field_of(tag.name) != Field::kOther) return at;
    from = at + 1;
  }
}

bool AdiReader::is_counted_otherwise(std::string_view value, std::size_t length) const {
  if (is_ascii(value)) return false;
  return std::ranges::count(other_lengths(value, form_.utf8), length) > 0;
}

// How long the value is that begins at a byte of the window and should have this length.
AdiReader::Value AdiReader::measure(std::size_t from, std::size_t length) {
  reach(from + length + 1);
  const std::string_view rest = window().substr(from);
  const std::string_view value = rest.substr(0, length);
  const bool whole = value.size() == length;
  const bool ends_well =
      whole && (rest.size() == length || rest[length] == '<' || is_space(rest[length]));
  if (ends_well && value.find('<') == value.npos && is_ascii(value)) return {length, false};
  const std::size_t next = find_tag(from) - from;
  const std::string_view all = trim_space(window().substr(from, next));
  const auto begin = static_cast<std::size_t>(all.data() - window().data()) - from;
  if (all.empty()) return {std::min(length, next), false};
  if (ends_well && length <= next) {
    const std::string_view behind = trim_space(window().substr(from + length, next - length));
    if (behind.empty() || is_comment(behind)) return {length, false};
    if (!is_counted_otherwise(all, length)) return {length, false};
  }
  return {begin + all.size(), true};
}

void AdiReader::consume(std::size_t bytes) {
  const std::string_view part = window().substr(0, bytes);
  line_ += static_cast<std::size_t>(std::ranges::count(part, '\n'));
  bytes_.count_lines(line_ - 1 - bytes_.line());
  bytes_.consume(bytes);
}

// The value's bytes as UTF-8. A file may hold both encodings: what is damaged in the file's own and
// sound in the other is read as the other.
std::string_view AdiReader::decoded(std::string_view bytes, bool& damaged) {
  if (is_ascii(bytes)) return bytes;
  text_.clear();
  if (form_.utf8) {
    if (is_valid_utf8(bytes)) return bytes;
    damaged = true;
    if (decode_cp932(bytes, text_) == 0) return text_;
    text_.clear();
    copy_utf8_escaping_invalid(bytes, text_);
    return text_;
  }
  damaged = decode_cp932(bytes, text_) > 0;
  if (!is_valid_utf8(bytes)) return text_;
  EncodingGuess guess;
  guess.see(bytes);
  if (!guess.utf8()) return text_;
  damaged = true;
  return bytes;
}

void AdiReader::put(std::string_view name, std::string_view bytes, Contact& contact,
                    FindingLog& findings) {
  const std::string_view raw = trim_space(bytes);
  if (raw.empty() || is_header_field(name)) return;
  record_size_ += name.size() + raw.size();
  constexpr std::size_t kMostFields = 2000;
  if (record_size_ > ByteReader::kLongestLine || contact.size() > kMostFields) {
    throw RecordError(
        bytes_.file().path(), contact.origin.line,
        "交信一つが長すぎます (1 MB か 2,000 欄を超えています)。<EOR> が無いようです");
  }
  bool damaged = false;
  const std::string_view value = decoded(raw, damaged);
  const std::string_view call = contact.get(Field::kCall);
  if (damaged)
    findings.add(FindingKind::kInvalidByte, line_, call,
                 std::string(name) + "=" + std::string(value));
  const std::string_view before = contact.get(name);
  if (before.empty()) {
    contact.set(name, value);
  } else if (before != value) {
    findings.add(FindingKind::kFieldRepeated, line_, call,
                 std::string(name) + "=" + std::string(value));
  }
}

void AdiReader::report_text(std::string_view text, const Contact& contact, FindingLog& findings) {
  bool damaged = false;
  const std::string_view readable = decoded(text, damaged);
  if (contact.size() == 0) {
    lost_ = readable;
    return;
  }
  findings.add(FindingKind::kTextBetweenTags, line_, contact.get(Field::kCall), readable);
}

// "CALL:6>JA1QQQ": a field whose "<" is missing. Anything else is no field.
void AdiReader::take_headless_field(std::string_view text, Contact& contact, FindingLog& findings) {
  const std::string with_bracket = "<" + std::string(text.substr(0, text.find('>') + 1));
  const Tag tag = tag_at(with_bracket);
  if (!tag.length || field_of(tag.name) == Field::kOther) {
    report_text(text, contact, findings);
    return;
  }
  const std::string_view behind = text.substr(tag.size - 1);
  const bool exact = *tag.length < behind.size() && is_space(behind[*tag.length]);
  if (contact.size() == 0) contact.origin.line = line_;
  put(tag.name, exact ? behind.substr(0, *tag.length) : behind, contact, findings);
  findings.add(FindingKind::kTagRepaired, line_, contact.get(Field::kCall), text);
}

// What stands before the next tag.
void AdiReader::skip_text(Contact& contact, FindingLog& findings) {
  const std::size_t end = find_tag(0);
  std::string_view text = window().substr(0, end);
  for (text = trim_space(text); is_comment(text); text = trim_space(text)) {
    text.remove_prefix(std::min(text.find_first_of("\r\n"), text.size()));
  }
  if (!text.empty()) take_headless_field(text, contact, findings);
  consume(end);
}

void AdiReader::take_field(const Tag& tag, Contact& contact, FindingLog& findings) {
  if (contact.size() == 0) contact.origin.line = line_;
  name_ = tag.name;  // the window may move
  const std::size_t from = tag.size;
  Value value{0, true};
  if (tag.length) {
    value = *tag.length == 0 ? Value{0, false} : measure(from, *tag.length);
  } else {
    const std::size_t next = find_tag(from);
    value.size = trim_space(window().substr(from, next - from)).empty() ? 0 : next - from;
    value.repaired = value.size > 0;
  }
  put(name_, window().substr(from, value.size), contact, findings);
  if (value.repaired) {
    bool damaged = false;
    findings.add(FindingKind::kTagRepaired, line_, contact.get(Field::kCall),
                 decoded(trim_space(window().substr(0, from + value.size)), damaged));
  }
  consume(from + value.size);
}

bool AdiReader::next(Contact& contact, FindingLog& findings) {
  contact.clear();
  record_size_ = 0;
  lost_.clear();
  for (;;) {
    skip_text(contact, findings);
    if (window().empty()) {  // the end of the file
      if (contact.size() == 0) {
        if (!lost_.empty()) findings.add(FindingKind::kUnreadRecord, line_, "", lost_);
        return false;
      }
      findings.add(FindingKind::kNoEndOfRecord, contact.origin.line, contact.get(Field::kCall), "");
      return true;
    }
    const Tag tag = tag_at(window());
    if (tag.is("EOR")) {
      consume(tag.size);
      if (contact.size() > 0) return true;
      if (!lost_.empty()) findings.add(FindingKind::kUnreadRecord, line_, "", lost_);
      lost_.clear();
    } else if (!tag.length && field_of(tag.name) == Field::kOther) {
      consume(tag.size);  // <EOF>, or an <EOH> out of its place
    } else if (contact.has(Field::kCall) && field_of(tag.name) == Field::kCall) {
      findings.add(FindingKind::kNoEndOfRecord, contact.origin.line, contact.get(Field::kCall), "");
      return true;
    } else {
      take_field(tag, contact, findings);
    }
  }
}

}  // namespace tobarine
