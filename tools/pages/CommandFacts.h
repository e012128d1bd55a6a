#ifndef MPUEVENT_PAGES_COMMANDFACTS_H
#define MPUEVENT_PAGES_COMMANDFACTS_H

#include <string>
#include <vector>

namespace mpuevent::pages {

/// An option, or an argument without a name.
struct OptionFacts {
  std::vector<std::string> names;  ///< "-t", "--type"; of an argument "FILE"
  std::string opposite;            ///< "--not-type", or empty
  std::string type;                ///< what it takes, "WORD"; empty for a flag
  std::string description;         ///< on one line
  std::vector<std::string> words;  ///< what it may be, if these are few
  std::string environment;         ///< the variable that sets it, or empty
  std::vector<std::string> needs;
  std::vector<std::string> excludes;
  bool required = false;
  bool takesFile = false;
  bool takesSeveral = false;
};

struct OptionGroup {
  std::string title;
  std::vector<OptionFacts> options;
};

/// What is to be told of a command, or of the program itself.
struct CommandFacts {
  std::string name;  ///< empty: the program
  std::string description;
  std::vector<OptionFacts> arguments;
  std::vector<OptionGroup> groups;  ///< in the order of the help
};

/// The program and then its commands.
std::vector<CommandFacts> factsOfCommands();

}  // namespace mpuevent::pages

#endif
