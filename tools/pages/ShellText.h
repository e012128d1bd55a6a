#ifndef MPUEVENT_PAGES_SHELLTEXT_H
#define MPUEVENT_PAGES_SHELLTEXT_H

#include <string>
#include <vector>

#include "CommandFacts.h"

namespace mpuevent::pages {

/// `text` as a word of a shell script.
inline std::string quoted(const std::string& text) {
  std::string result = "'";
  for (const char c : text) {
    if (c == '\'') {
      result += "'\\''";
    } else {
      result += c;
    }
  }
  return result + "'";
}

/// All words that an option is written with.
inline std::vector<std::string> spellings(const OptionFacts& option) {
  std::vector<std::string> names = option.names;
  if (!option.opposite.empty()) names.push_back(option.opposite);
  return names;
}

}  // namespace mpuevent::pages

#endif
