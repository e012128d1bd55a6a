#include "CommandFacts.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <set>
#include <sstream>
#include <string_view>

#include "CommandLine.h"
#include "OfferedWords.h"

namespace mpuevent::pages {

namespace {

using namespace std::string_literals;

constexpr std::array<std::string_view, 7> kFileTypes = {"CURSOR", "DB",  "DIR", "FILE",
                                                        "LIST",   "OUT", "PATH"};

std::string onOneLine(const std::string& text) {
  std::istringstream words(text);
  std::string line;
  for (std::string word; words >> word;) {
    if (!line.empty()) line += ' ';
    line += word;
  }
  return line;
}

std::vector<std::string> wordsOf(CLI::Option& option) {
  std::istringstream kept;
  try {
    kept.str(option.get_validator("")->get_name());
  } catch (const CLI::OptionNotFound&) {
    return {};
  }
  std::string word;
  std::vector<std::string> words;
  if (!std::getline(kept, word) || word != tool::kOfferedWords) return {};
  while (std::getline(kept, word)) words.push_back(word);
  return words;
}

// Sorted, as the set is one of pointers.
std::vector<std::string> namesOf(const std::set<CLI::Option*>& options) {
  std::vector<std::string> names;
  names.reserve(options.size());
  for (const CLI::Option* option : options) names.push_back(option->get_name());
  std::sort(names.begin(), names.end());
  return names;
}

OptionFacts factsOf(const CLI::App& command, CLI::Option& option) {
  OptionFacts facts;
  for (const std::string& name : option.get_snames()) facts.names.push_back("-" + name);
  for (const std::string& name : option.get_lnames()) {
    facts.names.push_back("--" + name);
    const std::string opposite = "--not-" + name;
    if (command.get_option_no_throw(opposite) != nullptr) facts.opposite = opposite;
  }
  const bool positional = facts.names.empty();
  if (positional) facts.names.push_back(option.get_name(true));
  const bool takesValue = option.get_items_expected_max() > 0;
  if (takesValue) facts.type = positional ? facts.names.front() : option.get_type_name();
  facts.description = onOneLine(option.get_description());
  facts.words = wordsOf(option);
  facts.environment = option.get_envname();
  facts.needs = namesOf(option.get_needs());
  facts.excludes = namesOf(option.get_excludes());
  facts.required = option.get_required();
  facts.takesFile = std::find(kFileTypes.begin(), kFileTypes.end(), facts.type) != kFileTypes.end();
  facts.takesSeveral = option.get_items_expected_max() > 1;
  return facts;
}

CommandFacts factsOf(CLI::App& command, bool isProgram) {
  CommandFacts facts;
  if (!isProgram) facts.name = command.get_name();
  facts.description = onOneLine(command.get_description());
  // A group without a name holds the opposites, which stand beside their options.
  for (const std::string& title : command.get_groups()) {
    if (title.empty()) continue;
    OptionGroup group{title, {}};
    for (CLI::Option* option : command.get_options()) {
      if (option->get_group() != title) continue;
      (option->get_positional() ? facts.arguments : group.options)
          .push_back(factsOf(command, *option));
    }
    if (!group.options.empty()) facts.groups.push_back(group);
  }
  return facts;
}

}  // namespace

std::vector<CommandFacts> factsOfCommands() {
  std::vector<CommandFacts> all;
  tool::showCommands([&all](CLI::App& command) { all.push_back(factsOf(command, all.empty())); });
  return all;
}

}  // namespace mpuevent::pages
