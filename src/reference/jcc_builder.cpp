#include "reference/jcc_builder.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <map>

#include "text/cp932.h"
#include "text/error.h"
#include "text/folder.h"
#include "text/input_file.h"
#include "text/strings.h"
#include "text/utf8.h"

namespace tobarine {
namespace {

enum class ListKind { kCities, kGuns, kWards };

constexpr std::size_t kTitleLines = 5;
constexpr std::size_t kLongestLine = 1000;  // bytes
constexpr std::size_t kMostProblems = 100;
constexpr std::size_t kShownChars = 80;  // of a line that is named in a problem

// Tabs, full-width blanks and full-width brackets as their half-width forms.
std::string plain(std::string text) {
  replace_all(text, "\t", " ");
  replace_all(text, "　", " ");
  replace_all(text, "（", "(");
  replace_all(text, "）", ")");
  return text;
}

std::string without_blanks(std::string text) {
  replace_all(text, " ", "");
  return text;
}

std::size_t digits_at(std::string_view text) {
  std::size_t n = 0;
  while (n < text.size() && is_digit(text[n])) ++n;
  return n;
}

std::string prefecture_name(const std::string& bare) {
  if (bare == "北海道") return bare;
  if (bare == "東京") return bare + "都";
  if (bare == "京都" || bare == "大阪") return bare + "府";
  return bare + "県";
}

std::string date_text(unsigned year, unsigned month, unsigned day) {
  if (year < 1900 || year > 2999 || month < 1 || month > 12 || day < 1 || day > 31) return "*";
  std::array<char, 48> text{};
  static_cast<void>(std::snprintf(text.data(), text.size(), "%04u/%02u/%02u", year, month, day));
  return text.data();
}

// The whole numbers of a text, left to right.
std::vector<unsigned> numbers_of(std::string_view text) {
  std::vector<unsigned> numbers;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const std::size_t n = digits_at(text.substr(i));
    if (n == 0) continue;
    numbers.push_back(
        static_cast<unsigned>(leading_number(text.substr(i, std::min<std::size_t>(n, 6)))));
    i += n;
  }
  return numbers;
}

// "Feb.19,2006", "Jan,9,2006", "1989(平成元)年2月12日以前" as yyyy/mm/dd; "*" when unreadable.
std::string abolished_date(std::string_view text) {
  const std::vector<unsigned> numbers = numbers_of(text);
  if (contains(text, "年") && numbers.size() >= 3) {
    return date_text(numbers[0], numbers[numbers.size() - 2], numbers.back());
  }
  constexpr std::string_view kMonths = "JANFEBMARAPRMAYJUNJULAUGSEPOCTNOVDEC";
  const std::string letters = upper(text);
  for (std::size_t month = 0; month < 12; ++month) {
    if (contains(letters, kMonths.substr(month * 3, 3)) && numbers.size() == 2) {
      return date_text(numbers[1], static_cast<unsigned>(month) + 1, numbers[0]);
    }
  }
  return "*";
}

class ListReader {
 public:
  ListReader(ListKind kind, std::map<std::string, std::string>& prefectures, JccBuild& build)
      : kind_(kind), prefectures_(prefectures), build_(build) {}

  JccCount read(std::string_view file, std::string_view bytes) {
    file_ = file;
    for_each_text_line(bytes, [this](const std::string& line) {
      ++line_;
      read_line(line);
      return true;
    });
    if (problems_ > kMostProblems) {
      build_.problems.push_back(file_ + ": ほか " + std::to_string(problems_ - kMostProblems) +
                                " 行");
    }
    compare_with_stated(bytes);
    if (count_.current == 0) throw FileError(file, "リストではないようです (番号の行がありません)");
    return count_;
  }

 private:
  void problem(const std::string& reason, std::string_view text) {
    if (++problems_ > kMostProblems) return;
    build_.problems.push_back(file_ + ": " + std::to_string(line_) + " 行目: " + reason + ": " +
                              std::string(left_chars(trim(text), kShownChars)));
  }

  void compare_with_stated(std::string_view bytes) {
    const JccCount stated = stated_count(bytes);
    if (stated == JccCount() || stated == count_) return;
    build_.miscounts.push_back(file_ + ": 現存 " + std::to_string(stated.current) + " 消滅 " +
                               std::to_string(stated.abolished) + " のはずが " +
                               std::to_string(count_.current) + " と " +
                               std::to_string(count_.abolished));
  }

  void read_line(const std::string& line) {
    if (line.size() > kLongestLine) {
      problem("長すぎる行", line);
      return;
    }
    if (has_invalid_byte(line)) {
      problem("壊れた文字のある行", line);
      return;
    }
    const std::string text = plain(line);
    std::string_view rest = trim(text);
    bool abolished = false;
    for (const std::string_view mark : {"*", "※"}) {
      if (!rest.starts_with(mark)) continue;
      abolished = true;
      rest = trim(rest.substr(mark.size()));
    }
    const std::size_t digits = digits_at(rest);
    if (in_body_ && digits >= 4 && digits <= 6) {
      read_entry(rest.substr(0, digits), rest.substr(digits), abolished);
    } else if (!read_heading(without_blanks(text)) && in_body_ && !is_town(text)) {
      problem("読めない行", line);
    }
  }

  // Towns are set in, carry no number, and stand under a gun.
  bool is_town(const std::string& text) const {
    if (is_blank(text)) return true;
    return kind_ == ListKind::kGuns && text[0] == ' ' &&
           text.find_first_of("0123456789") == std::string::npos;
  }

  // "青森02", or in the ward list "札幌市(0101)".
  bool read_heading(const std::string& text) {
    const std::size_t first_digit = text.find_first_of("0123456789");
    if (first_digit == 0 || first_digit == std::string::npos) return false;
    const std::size_t digits = digits_at(std::string_view(text).substr(first_digit));
    const std::string number = text.substr(first_digit, digits);
    const std::string behind = text.substr(first_digit + digits);
    std::string name = text.substr(0, first_digit);
    if (kind_ == ListKind::kWards) {
      if (digits != 4 || behind != ")" || !name.ends_with("市(")) return false;
      name.pop_back();
      city_ = name;
    } else {
      if (digits != 2 || !behind.empty()) return false;
      prefectures_[number] = prefecture_name(name);
    }
    heading_ = number;
    in_body_ = true;
    return true;
  }

  void read_entry(std::string_view number, std::string_view rest, bool abolished) {
    if (rest.starts_with("※")) {
      abolished = true;
      rest.remove_prefix(std::string_view("※").size());
    }
    const std::size_t quote = rest.find('"');
    std::string_view date =
        quote == std::string_view::npos ? std::string_view() : rest.substr(quote + 1);
    std::string name;
    for_each_piece(rest.substr(0, quote), ' ', [&](std::string_view word) {
      if (name.empty() && !is_ascii(word)) {
        name = word;
      } else if (!name.empty() && !word.empty()) {
        date = word;
      }
    });
    const std::size_t bracket = name.find('(');
    if (bracket == 0 || name.empty()) {
      problem(bracket == 0 ? "番号だけの行" : "名前の無い行",
              std::string(number) + std::string(rest));
      return;
    }
    name.resize(std::min(bracket, name.size()));
    const auto prefecture = prefectures_.find(std::string(number.substr(0, 2)));
    if (!number.starts_with(heading_) || prefecture == prefectures_.end() || !fits(number)) {
      problem("番号が見出しと合わない行", std::string(number) + std::string(rest));
      return;
    }
    JccPlace place{std::string(number), abolished ? abolished_date(date) : "", prefecture->second,
                   prefecture->second + full_name(number, name)};
    if (place.abolished == "*")
      problem("消滅日の読めない行", std::string(number) + std::string(rest));
    if (build_.places.size() >= kMostPlaces) {
      throw FileError(file_, "リストではないようです (番号が多すぎます)");
    }
    ++(abolished ? count_.abolished : count_.current);
    build_.places.push_back(std::move(place));
  }

  bool fits(std::string_view number) const {
    switch (kind_) {
      case ListKind::kCities:
        return number.size() == 4 || (number.size() == 6 && number.starts_with("1001"));
      case ListKind::kGuns:
        return number.size() == 5;
      case ListKind::kWards:
        return number.size() == 6;
    }
    return false;
  }

  // What follows the prefecture.
  std::string full_name(std::string_view number, const std::string& name) const {
    if (kind_ == ListKind::kWards) return city_ + name + "区";
    if (kind_ == ListKind::kGuns) return name.ends_with("支庁") ? name : name + "郡";
    if (number.size() == 6) return name + "区";
    // The former number of all 23 wards of Tokyo.
    if (name == "東京23区") return "23区";
    return name + "市";
  }

  ListKind kind_;
  std::map<std::string, std::string>& prefectures_;
  JccBuild& build_;
  JccCount count_;
  std::string file_;
  std::size_t line_ = 0;
  std::size_t problems_ = 0;
  bool in_body_ = false;
  std::string heading_;  // number of the prefecture or city
  std::string city_;
};

// Calls `visit` with each of the first lines until it returns true.
template <typename Visit>
void search_title(std::string_view list, Visit visit) {
  std::size_t lines = 0;
  for_each_text_line(list, [&](const std::string& line) {
    return ++lines <= kTitleLines && line.size() <= kLongestLine && !visit(line);
  });
}

}  // namespace

JccCount stated_count(std::string_view list) {
  JccCount count;
  search_title(list, [&count](const std::string& line) {
    const std::size_t at = line.find("消滅");
    if (at == std::string::npos) return false;
    const std::vector<unsigned> before = numbers_of(std::string_view(line).substr(0, at));
    const std::vector<unsigned> behind = numbers_of(std::string_view(line).substr(at));
    if (before.empty() || behind.empty()) return false;
    count = {before.back(), behind.front()};
    return true;
  });
  return count;
}

std::string stated_date(std::string_view list) {
  std::string date;
  search_title(list, [&date](const std::string& line) {
    const std::vector<unsigned> numbers = numbers_of(line);
    for (std::size_t i = 0; i + 2 < numbers.size(); ++i) {
      date = date_text(numbers[i], numbers[i + 1], numbers[i + 2]);
      if (date != "*") return true;
    }
    date.clear();
    return false;
  });
  return date;
}

JccBuild build_jcc(const std::filesystem::path& folder) {
  std::array<std::string, 3> lists;
  for (std::size_t i = 0; i < lists.size(); ++i) {
    lists[i] = read_whole_file(file_in(folder, kListFiles[i]), kLargestList);
  }
  return build_jcc(lists);
}

JccBuild build_jcc(const std::array<std::string, 3>& lists) {
  JccBuild build;
  std::map<std::string, std::string> prefectures;
  const auto read = [&](ListKind kind, std::size_t list) {
    return ListReader(kind, prefectures, build).read(kListFiles[list], lists[list]);
  };
  build.cities = read(ListKind::kCities, 0);
  build.guns = read(ListKind::kGuns, 1);
  build.wards = read(ListKind::kWards, 2);
  std::ranges::stable_sort(build.places, {}, &JccPlace::number);
  const auto doubled = [&build](const JccPlace& a, const JccPlace& b) {
    if (a.number != b.number) return false;
    build.problems.push_back("二度ある番号: " + b.number + " " + a.name + ", " + b.name);
    return true;
  };
  build.places.erase(std::unique(build.places.begin(), build.places.end(), doubled),
                     build.places.end());
  return build;
}

JccChanges compare_jcc(const std::vector<JccPlace>& before, const std::vector<JccPlace>& after) {
  std::map<std::string_view, const JccPlace*> old;
  for (const JccPlace& place : before) old[place.number] = &place;
  JccChanges changes;
  for (const JccPlace& place : after) {
    const auto found = old.find(place.number);
    const std::string text = place.number + " " + place.name;
    if (found == old.end()) {
      changes.added.push_back(text);
      continue;
    }
    if (found->second->name != place.name) {
      changes.renamed.push_back(text + " (" + found->second->name + ")");
    }
    if (found->second->abolished.empty() && !place.abolished.empty()) {
      changes.abolished.push_back(text + " " + place.abolished);
    }
    old.erase(found);
  }
  for (const auto& [number, place] : old) {
    changes.removed.push_back(place->number + " " + place->name);
  }
  return changes;
}

std::string miscount_text(const JccBuild& build) {
  std::string text;
  for (const std::string& miscount : build.miscounts) {
    text.append(text.empty() ? "リストが揃っていません (" : "、").append(miscount);
  }
  return text.empty() ? text : text + ")";
}

std::string jcc_loss(std::size_t places_before, const JccChanges& changes, const JccBuild& build) {
  std::string reason = miscount_text(build);
  if (changes.removed.size() * 10 > places_before) {
    reason.append(reason.empty() ? "" : "。").append("今の ");
    reason.append(std::to_string(places_before)).append(" 件の内 ");
    reason.append(std::to_string(changes.removed.size())).append(" 件が無くなります");
  }
  return reason;
}

}  // namespace tobarine
