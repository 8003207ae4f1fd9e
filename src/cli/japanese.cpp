#include "cli/japanese.h"

#include <memory>
#include <string_view>

#include "text/strings.h"
#include "text/utf8.h"

namespace tobarine {
namespace {

// Full-width characters take two columns.
std::size_t columns(std::string_view text) {
  std::size_t count = 0;
  while (!text.empty()) {
    const Utf8Char c = next_utf8(text);
    text.remove_prefix(c.size);
    const bool half_width =
        c.code_point < 0x1100 || (c.code_point >= 0xFF61 && c.code_point < 0xFFA0);
    count += half_width ? 1 : 2;
  }
  return count;
}

class JapaneseFormatter : public CLI::Formatter {
 public:
  std::string make_option(const CLI::Option* option, bool positional) const override {
    return row(make_option_name(option, positional) + make_option_opts(option),
               option->get_description());
  }
  std::string make_option_opts(const CLI::Option* option) const override {
    if (!option->get_option_text().empty()) return " " + option->get_option_text();
    if (option->get_items_expected_max() == 0) return "";  // a flag
    std::string text = option->get_positional() ? "" : " 値";
    if (option->get_expected_max() > 1) text += " ...";
    return option->get_required() ? text + " (必須)" : text;
  }
  std::string make_footer(const CLI::App* command) const override {
    const std::string common =
        command->get_parent() == nullptr
            ? ""
            : "どのコマンドにもあるオプション (--set、--report、--json など): "
              "tobarine-cli --help\n\n";
    return common + CLI::Formatter::make_footer(command);
  }
  std::string make_subcommand(const CLI::App* command) const override {
    return row(command->get_display_name(true), command->get_description());
  }

 private:
  static std::string row(const std::string& left, const std::string& right) {
    constexpr std::size_t kLeft = 30;
    std::string text = "  " + left;
    const std::size_t used = columns(text);
    text.append(used < kLeft ? kLeft - used : 0, ' ');
    if (used >= kLeft) text.append("\n").append(kLeft, ' ');
    return text + right + "\n";
  }
};

// The command that the words name, as far as they do.
const CLI::App& chosen(const CLI::App& app) {
  const CLI::App* command = &app;
  while (!command->get_subcommands().empty()) command = command->get_subcommands().back();
  return *command;
}

std::string called(const CLI::App& command) {
  const CLI::App* const parent = command.get_parent();
  return (parent == nullptr ? "" : called(*parent) + " ") + command.get_name();
}

std::string names_of_commands(const CLI::App& app) {
  std::string names;
  for (const CLI::App* command : app.get_subcommands([](const CLI::App*) { return true; })) {
    names += (names.empty() ? "" : "、") + command->get_name();
  }
  return names;
}

std::string unexpected(const CLI::App& command, const std::string& word) {
  if (word.starts_with('-')) return "オプション " + word + " はありません";
  const std::string commands = names_of_commands(command);
  if (commands.empty()) return "余分な語があります: " + word;
  return "コマンド " + word + " はありません (使えるもの: " + commands + ")";
}

std::string missing(const CLI::App& command, const std::string& name) {
  const std::string commands = names_of_commands(command);
  if (!commands.empty()) return "コマンドがありません (使えるもの: " + commands + ")";
  const CLI::Option* const option = command.get_option_no_throw(name);
  return name + " がありません" + (option == nullptr ? "" : " (" + option->get_description() + ")");
}

// From "NAME: VALUE not in {a,b}", or "NAME: " and a text that is Japanese already.
std::string refused(const std::string& name, std::string reason) {
  constexpr std::string_view kNotIn = " not in {";
  const std::size_t at = reason.find(kNotIn);
  if (at == std::string::npos) return name + ": " + reason;
  std::string values = reason.substr(at + kNotIn.size());
  values.pop_back();
  replace_all(values, ",", "、");
  return name + " の値が使えません: " + reason.substr(0, at) + " (使える値: " + values + ")";
}

std::string reason_of(const CLI::App& app, const CLI::ParseError& error) {
  const CLI::App& command = chosen(app);
  const std::string what = error.what();
  const auto before = [&what](std::string_view mark) { return what.substr(0, what.find(mark)); };
  const auto after = [&what](std::string_view mark) {
    const std::size_t at = what.find(mark);
    return at == std::string::npos ? "" : what.substr(at + mark.size());
  };
  const std::vector<std::string> rest = app.remaining(true);
  if (dynamic_cast<const CLI::RequiredError*>(&error) != nullptr) {
    return rest.empty() ? missing(command, before(" is required")) : unexpected(command, rest[0]);
  }
  if (dynamic_cast<const CLI::ExtrasError*>(&error) != nullptr && !rest.empty()) {
    return unexpected(command, rest[0]);
  }
  if (dynamic_cast<const CLI::ValidationError*>(&error) != nullptr) {
    return refused(before(": "), after(": "));
  }
  if (contains(what, " = ")) {  // "Could not convert: NAME = VALUE"
    const std::string named = after(": ");
    return named.substr(0, named.find(" = ")) + " の値が使えません: " + after(" = ");
  }
  if (dynamic_cast<const CLI::ArgumentMismatch*>(&error) != nullptr) {
    return before(":") +
           (contains(what, "At Most") ? " は一度しか書けません" : " の後に値を書いて下さい");
  }
  return "使い方が違います: " + what;
}

}  // namespace

void speak_japanese(CLI::App& app) {
  const auto formatter = std::make_shared<JapaneseFormatter>();
  formatter->label("Usage", "使い方");
  formatter->label("OPTIONS", "オプション");
  formatter->label("SUBCOMMAND", "コマンド");
  formatter->label("Positionals", "引数");
  app.formatter(formatter);
  app.option_defaults()->group("オプション");
}

std::string usage_message(const CLI::App& app, const CLI::ParseError& error) {
  return reason_of(app, error) + "。使い方: " + called(chosen(app)) + " --help";
}

}  // namespace tobarine
