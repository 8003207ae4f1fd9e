#include "hamlog/adif_census.h"

#include <algorithm>
#include <utility>

#include "text/cp932.h"
#include "text/input_file.h"
#include "text/strings.h"
#include "text/utf8.h"

namespace tobarine {
namespace {

constexpr auto kNone = std::string_view::npos;

std::string readable(std::string_view value) {
  const std::string_view call = trim(value.substr(0, FindingLog::kLongestText));
  return is_valid_utf8(call) ? std::string(call) : from_cp932(call);
}

// "<NAME:3:S>" read up to its ">": where the value begins, and how long it says it is.
struct TagHead {
  bool is_field = false;  // has a ":"
  std::size_t value = 0;  // 0: the tag has no ">"
  std::size_t length = 0;
};

TagHead read_head(std::string_view line, std::size_t tag) {
  constexpr std::size_t kLongest = ByteReader::kLongestLine;
  TagHead head;
  for (std::size_t i = tag + 1; i < line.size() && line[i] != '<'; ++i) {
    const char c = line[i];
    if (c == '>') {
      head.value = i + 1;
      break;
    }
    if (c != ':' || head.is_field) continue;
    head.is_field = true;
    for (std::size_t d = i + 1; d < line.size() && is_digit(line[d]); ++d) {
      head.length = std::min(head.length * 10 + static_cast<std::size_t>(line[d] - '0'), kLongest);
    }
  }
  return head;
}

// Where the value ends by its length, if what follows there is a tag or nothing. Lengths lie in
// real files: else the value ends at the next "<".
std::size_t end_of_value(std::string_view line, const TagHead& head) {
  if (head.length > line.size() - head.value) return head.value;
  const std::size_t end = head.value + head.length;
  const std::size_t next = line.find_first_not_of(" \t\r", end);
  return next == kNone || line[next] == '<' ? end : head.value;
}

}  // namespace

void AdifCensus::see(std::string_view line) {
  ++line_;
  line_has_call_ = line_has_header_end_ = line_has_record_end_ = false;
  if (lines_.at_start()) {
    ++part_;
    part_line_ = line_;
    part_blank_ = true;
    part_used_ = false;
    part_whole_ = 0;
    part_call_.reset();
  }
  part_blank_ = part_blank_ && is_blank(line);
  layout_.lone_cr = layout_.lone_cr || contains(line, "\r");
  take_tags(line);
  if (line_has_header_end_ && lines_.in_header()) layout_.header_ended = true;
  has_header_end_ = has_header_end_ || (line_has_header_end_ && call_lines_ == 0);
  if (line_has_call_) ++call_lines_;
  const bool header = lines_.in_header();
  if (lines_.ends_here(line_has_header_end_, line_has_record_end_) && !header) close_lines();
}

void AdifCensus::end() {
  close_record();
  if (!lines_.in_header() && !lines_.at_start()) close_lines();
}

// What the tolerant reading looks for counts wherever it stands, all else outside values only.
void AdifCensus::take_tags(std::string_view line) {
  const std::size_t first = line.find('<');
  std::size_t calls = 0;
  std::size_t marks = 0;
  std::size_t last_mark = kNone;
  for (std::size_t tag = first; tag < line.size() - 1; tag = line.find('<', tag + 1)) {
    const char letter = line[tag + 1] & ~0x20;
    if (letter == 'C') {
      if (is_tag_at(line, tag, "<CALL:")) ++calls;
    } else if (letter == 'E') {
      const bool record_end = is_tag_at(line, tag, "<EOR>");
      const bool header_end = !record_end && is_tag_at(line, tag, "<EOH>");
      line_has_record_end_ = line_has_record_end_ || record_end;
      line_has_header_end_ = line_has_header_end_ || header_end;
      if (!record_end && !header_end) continue;
      ++marks;
      last_mark = tag;
    }
  }
  line_has_call_ = calls > 0;
  if (first == kNone) return;
  // In the usual line no value can hide a CALL tag or an end mark: they stand at its ends.
  const bool call_leads = calls == 0 || (calls == 1 && is_tag_at(line, first, "<CALL:"));
  const bool mark_ends = marks == 0 || (marks == 1 && is_blank(line.substr(last_mark + 5)));
  const bool usual = call_leads && mark_ends && !line_has_header_end_;
  for (std::size_t tag = first; tag != kNone;) {
    const std::size_t end = take_tag(line, tag);
    tag = usual && end > tag + 1 && tag != last_mark ? last_mark : line.find('<', end);
  }
}

// Returns where its value ends, or what comes behind it.
std::size_t AdifCensus::take_tag(std::string_view line, std::size_t tag) {
  if (is_tag_at(line, tag, "<EOR>")) close_record();
  if (is_tag_at(line, tag, "<EOH>")) close_header();
  const TagHead head = read_head(line, tag);
  if (!head.is_field) return tag + 1;
  const std::size_t begin = std::max(head.value, tag + 1);
  std::size_t end = head.value == 0 ? begin : end_of_value(line, head);
  begin_or_go_on();
  if (!is_tag_at(line, tag, "<CALL:")) return end;
  if (end == begin) end = std::min(line.find('<', begin), line.size());
  take_call(line.substr(begin, end - begin));
  return end;
}

void AdifCensus::begin_or_go_on() {
  if (!open_) {
    open_ = true;
    others_there_ = part_used_;
    if (part_used_) {
      layout_.hurt += std::exchange(part_whole_, 0);
      hurt_record();
    }
  } else if (record_part_ != part_) {
    others_there_ = false;
    hurt_record();
  }
  if (lines_.in_header()) hurt_record();
  record_part_ = part_;
  part_used_ = true;
}

void AdifCensus::take_call(std::string_view value) {
  if (record_has_call_) hurt_record();  // the one before has no end mark
  record_has_call_ = true;
  Place place{line_, readable(value)};
  if (lines_.in_header()) {
    lose_in_header();
    header_call_ = std::move(place);
    return;
  }
  ++layout_.contacts;
  ++(record_hurt_ ? layout_.hurt : record_whole_);
  if (part_call_) {
    ++layout_.shared;
    findings_.add(FindingKind::kSharedRecord, part_call_->line, part_call_->call,
                  "後の交信: " + place.call);
  }
  part_call_ = std::move(place);
}

// The contact that stands in the header's lines, now that it is sure that it is one.
void AdifCensus::lose_in_header() {
  if (!header_call_) return;
  ++layout_.contacts;
  ++layout_.in_header;
  ++layout_.hurt;
  findings_.add(FindingKind::kLostInHeader, header_call_->line, header_call_->call, "");
  header_call_.reset();
}

void AdifCensus::hurt_record() {
  layout_.hurt += std::exchange(record_whole_, 0);
  record_hurt_ = true;
}

void AdifCensus::close_record() {
  lose_in_header();
  if (record_part_ != part_) hurt_record();  // its end mark will be a record of its own
  part_whole_ += record_whole_;
  open_ = record_has_call_ = record_hurt_ = false;
  record_whole_ = 0;
}

// Tags before it that are no contact's were the header's and do no harm.
void AdifCensus::close_header() {
  header_call_.reset();
  if (open_ && !record_has_call_) part_used_ = others_there_;
  close_record();
}

void AdifCensus::close_lines() {
  if (part_blank_ || part_call_) return;
  ++layout_.no_call;
  findings_.add(FindingKind::kNotAContact, part_line_, "", "");
}

}  // namespace tobarine
