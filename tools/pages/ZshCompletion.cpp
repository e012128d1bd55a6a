#include "Pages.h"
#include "ShellText.h"

namespace mpuevent::pages {

namespace {

// Words of codes may be several, with commas between them, in any case.
constexpr char kHead[] = R"(#compdef mpuevent

(( $+functions[_mpuevent_codes] )) || _mpuevent_codes() {
  _sequence -d compadd -M 'm:{[:lower:]}={[:upper:]}' - "$@"
}

local -a commands=(
)";

// What has a meaning of its own in what _arguments and _describe are told.
std::string escaped(const std::string& text, const std::string& marks) {
  std::string result;
  for (const char c : text) {
    if (c == '\\' || marks.find(c) != std::string::npos) result += '\\';
    result += c;
  }
  return result;
}

std::string actionOf(const OptionFacts& option) {
  if (option.takesFile) return "_files";
  if (option.words.empty()) return " ";
  std::string words;
  for (const std::string& word : option.words) words += ' ' + quoted(word);
  return option.opposite.empty() ? "{compadd --" + words + "}" : " _mpuevent_codes" + words;
}

std::string specOf(const std::string& name, const std::string& description,
                   const OptionFacts& option) {
  std::string spec = "*" + name;
  if (!option.type.empty()) spec += name.starts_with("--") ? "=" : "+";
  spec += "[" + escaped(description, "[]") + "]";
  if (!option.type.empty()) spec += ":" + escaped(option.type, ":") + ":" + actionOf(option);
  return " \\\n        " + quoted(spec);
}

std::string argumentsOf(const CommandFacts& command) {
  std::string text = "      _arguments -s -S";
  for (const OptionGroup& group : command.groups) {
    for (const OptionFacts& option : group.options) {
      for (const std::string& name : option.names) text += specOf(name, option.description, option);
      if (option.opposite.empty()) continue;
      text += specOf(option.opposite, "The opposite of " + option.names.back(), option);
    }
  }
  for (const OptionFacts& argument : command.arguments) {
    const std::string action = argument.words.empty() ? "_files" : actionOf(argument);
    text += " \\\n        " + quoted((argument.takesSeveral ? "*:" : ":") +
                                     escaped(argument.type, ":") + ":" + action);
  }
  return text + "\n";
}

}  // namespace

std::string zshCompletion(const std::vector<CommandFacts>& commands) {
  std::string text = kHead;
  for (const CommandFacts& command : commands) {
    if (command.name.empty()) continue;
    text += "  " + quoted(command.name + ":" + escaped(command.description, ":")) + "\n";
  }
  text +=
      ")\nif (( CURRENT == 2 )) && [[ $words[2] != -* ]]; then\n"
      "  _describe command commands\n  return\nfi\n"
      "local command=$words[2]\n"
      "[[ $command == -* ]] || { shift words; (( CURRENT-- )) }\n"
      "case $command in\n";
  for (const CommandFacts& command : commands) {
    text += "    " + (command.name.empty() ? "-*" : command.name) + ")\n" + argumentsOf(command) +
            "      ;;\n";
  }
  return text + "esac\n";
}

}  // namespace mpuevent::pages
