#include <cctype>

#include "Pages.h"

namespace mpuevent::pages {

namespace {

// scdoc takes `*` and `_` for marks, and some characters at the beginning of a line.
std::string plain(const std::string& text) {
  std::string escaped;
  for (const char c : text) {
    if (c == '\\' || c == '*' || c == '_') escaped += '\\';
    escaped += c;
  }
  const bool marks =
      !text.empty() && std::string("#-|[]!+").find(text.front()) != std::string::npos;
  return marks ? "\\" + escaped : escaped;
}

std::string bold(const std::string& text) { return "*" + plain(text) + "*"; }

std::string listed(const std::vector<std::string>& names) {
  std::string text;
  for (const std::string& name : names) text += (text.empty() ? "" : ", ") + bold(name);
  return text;
}

std::string sentence(std::string text) {
  text.front() = static_cast<char>(std::toupper(static_cast<unsigned char>(text.front())));
  return plain(text) + ".";
}

std::string paragraph(const OptionFacts& option) {
  std::string text = listed(option.names);
  if (!option.opposite.empty()) text += ", " + bold(option.opposite);
  if (!option.type.empty() && option.type != option.names.front()) {
    text += " _" + plain(option.type) + "_";
  }
  text += "\n\t" + plain(option.description);
  const auto add = [&text](const std::string& said) { text += ". " + said; };
  if (option.required) add("Required");
  if (!option.needs.empty()) add("Only with " + listed(option.needs));
  if (!option.excludes.empty()) add("Not with " + listed(option.excludes));
  if (!option.environment.empty()) add("Unless given, _" + plain(option.environment) + "_ says it");
  return text + ".\n\n";
}

}  // namespace

std::string manOptions(const CommandFacts& command) {
  std::string text;
  if (!command.arguments.empty()) text += "# ARGUMENTS\n\n";
  for (const OptionFacts& argument : command.arguments) text += paragraph(argument);
  text += "# OPTIONS\n\n";
  for (const OptionGroup& group : command.groups) {
    // What stands in parentheses behind a title is said of all its options.
    const std::size_t note = group.title.find(" (");
    if (command.groups.size() > 1) text += "## " + group.title.substr(0, note) + "\n\n";
    if (note != std::string::npos) {
      text += sentence(group.title.substr(note + 2, group.title.size() - note - 3)) + "\n\n";
    }
    for (const OptionFacts& option : group.options) text += paragraph(option);
  }
  return text;
}

std::string manCommands(const std::vector<CommandFacts>& commands) {
  std::string text;
  for (const CommandFacts& command : commands) {
    if (command.name.empty()) continue;
    const std::string page = command.name == "help" ? "" : ": *mpuevent-" + command.name + "*(1)";
    text += bold(command.name) + "\n\t" + plain(command.description) + page + ".\n\n";
  }
  return text;
}

}  // namespace mpuevent::pages
