// The user's options, one row each: where the settings file keeps it, which control shows it, and
// which values it takes. The settings file, --set, the `settings` listing, the manual page and the
// windows walk this table. A new option is a member of Settings and a row here.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <variant>

#include "app/controls.h"
#include "app/settings.h"

namespace tobarine {

struct OptionValue {
  std::string_view value;
  std::string_view meaning;  // Japanese
};

struct Option {
  enum class Window { kNone, kMain, kZlog };  // kZlog: ADIF to zLog
  // Later: with the next option that is saved. Once chosen: at once, but the file of the first
  // start does not have it.
  enum class Saved { kAtOnce, kLater, kOnceChosen };
  // Number text: read as its leading number's text. Path: may be longer than other texts.
  enum class Form { kPlain, kNumberText, kPath };

  std::string_view name;     // as the member; what --set takes, and shows in the listing
  std::string_view section;  // of the settings file
  std::string_view key;      // there, taken by --set too
  std::variant<std::int16_t Settings::*, std::string Settings::*> member;
  std::string_view first;  // the value at the first start
  Window window;
  std::string_view control;             // of that window: "Check9"; "Option1" is the whole group
  std::span<const OptionValue> values;  // in the order of a group's buttons; empty: any text
  std::string_view meaning;             // Japanese
  Saved saved = Saved::kAtOnce;
  Form form = Form::kPlain;
};

// In the order of the settings file.
std::span<const Option> option_table();

// By its name or key, in any case; nullptr: there is none.
const Option* find_option(std::string_view name);

// What a control shows; nullptr: nothing of the settings.
const Option* find_option(Option::Window window, std::string_view control);

std::string option_value(const Settings& settings, const Option& option);

// Takes any text: numbers are read as those of the settings file, texts as they stand.
void set_option(Settings& settings, const Option& option, std::string_view value);

// The values that --set takes: "0 (しない)、1 (する)", or "文字" for any text.
std::string allowed_values(const Option& option);

// Makes a control show its option; `name` is "Check9", or "Option1_2" for a button of a group. A
// control without an option stays as it is.
void show_option(const Settings& settings, Option::Window window, std::string_view name,
                 Control& control);

}  // namespace tobarine
