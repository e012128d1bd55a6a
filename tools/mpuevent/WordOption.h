#ifndef MPUEVENT_TOOL_WORDOPTION_H
#define MPUEVENT_TOOL_WORDOPTION_H

#include <CLI/CLI.hpp>
#include <initializer_list>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "OfferedWords.h"

namespace mpuevent::tool {

/// Adds an option that is one of a few words, each with a value for `chosen`.
template <typename Value>
CLI::Option* addWordOption(CLI::App& command, const std::string& name, Value& chosen,
                           std::initializer_list<std::pair<const std::string, Value>> words,
                           const std::string& description) {
  std::vector<std::string> allowed;
  for (const auto& [word, value] : words) allowed.push_back(word);
  return command
      .add_option_function<std::string>(
          name,
          [&chosen, values = std::map<std::string, Value>(words)](const std::string& word) {
            chosen = values.at(word);
          },
          description)
      ->check(offering(CLI::IsMember(allowed), allowed));
}

}  // namespace mpuevent::tool

#endif
