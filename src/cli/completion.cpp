#include "cli/completion.h"

#include <vector>

#include "app/option_table.h"

namespace tobarine {
namespace {

std::vector<const CLI::App*> commands_of(const CLI::App& app) {
  return app.get_subcommands([](const CLI::App*) { return true; });
}

// The words that may follow a command: its own commands, its options and those of all commands.
std::string words(const CLI::App& command) {
  std::string text;
  for (const CLI::App* sub : commands_of(command)) text += sub->get_name() + " ";
  for (const CLI::App* app = &command; app != nullptr; app = app->get_parent()) {
    for (const CLI::Option* option : app->get_options()) {
      const bool repeated = app != &command && option->check_lname("help");
      if (option->get_group().empty() || repeated) continue;
      for (const std::string& name : option->get_lnames()) text += "--" + name + " ";
    }
  }
  text.pop_back();
  return text;
}

// One row of the `case` that sorts by the commands given so far.
void add_rows(const CLI::App& command, const std::string& path, std::string& rows) {
  rows += "    '" + path + "') words='" + words(command) + "'" +
          (commands_of(command).empty() ? " files=1" : "") + " ;;\n";
  for (const CLI::App* sub : commands_of(command)) {
    add_rows(*sub, path + (path.empty() ? "" : " ") + sub->get_name(), rows);
  }
}

// The commands as they may follow one another: "h2l", "lookup", "lookup calls".
void add_paths(const CLI::App& command, const std::string& path, std::string& paths) {
  for (const CLI::App* sub : commands_of(command)) {
    const std::string name = path + (path.empty() ? "" : " ") + sub->get_name();
    paths += (paths.empty() ? "'" : " | '") + name + "'";
    add_paths(*sub, name, paths);
  }
}

std::string setting_names() {
  std::string text;
  for (const Option& option : option_table()) text.append(option.name).append("= ");
  text.pop_back();
  return text;
}

std::string setting_values() {
  std::string rows;
  for (const Option& option : option_table()) {
    if (option.values.empty()) continue;
    rows.append("    ").append(option.name).append(" | ").append(option.key).append(") words='");
    for (const OptionValue& value : option.values) rows.append(value.value).append(" ");
    rows.back() = '\'';
    rows += " ;;\n";
  }
  return rows;
}

}  // namespace

std::string bash_completion(const CLI::App& app) {
  std::string rows;
  std::string paths;
  add_rows(app, "", rows);
  add_paths(app, "", paths);
  return R"(# bash completion for tobarine-cli, made by "tobarine-cli --completion"
_tobarine_cli_value() {  # of a setting
  local words=
  case $1 in
)" + setting_values() +
         R"(  esac
  COMPREPLY=($(compgen -W "$words" -- "$2"))
}
_tobarine_cli() {
  local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD-1]} path= words= files= given
  if [[ $before == = && ${COMP_WORDS[COMP_CWORD-3]} == --set ]]; then
    _tobarine_cli_value "${COMP_WORDS[COMP_CWORD-2]}" "$word"
    return
  elif [[ $word == = && ${COMP_WORDS[COMP_CWORD-2]} == --set ]]; then
    _tobarine_cli_value "$before" ''
    return
  elif [[ $before == --set ]]; then
    compopt -o nospace
    COMPREPLY=($(compgen -W ')" +
         setting_names() + R"(' -- "$word"))
    return
  fi
  for given in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do
    case ${path:+$path }$given in
      )" +
         paths + R"() path=${path:+$path }$given ;;
    esac
  done
  case $path in
)" + rows +
         R"(  esac
  COMPREPLY=($(compgen -W "$words" -- "$word"))
  if [[ -n $files && $word != -* ]]; then
    compopt -o filenames
    COMPREPLY+=($(compgen -f -- "$word"))
  fi
}
complete -F _tobarine_cli tobarine-cli
)";
}

}  // namespace tobarine
