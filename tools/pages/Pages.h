#ifndef MPUEVENT_PAGES_PAGES_H
#define MPUEVENT_PAGES_PAGES_H

#include <string>
#include <vector>

#include "CommandFacts.h"

namespace mpuevent::pages {

/// The section OPTIONS of a command's man page, as scdoc reads it.
std::string manOptions(const CommandFacts& command);

/// A list of the commands, as scdoc reads it.
std::string manCommands(const std::vector<CommandFacts>& commands);

/// Completion of the program's command line.
std::string bashCompletion(const std::vector<CommandFacts>& commands);
std::string zshCompletion(const std::vector<CommandFacts>& commands);

}  // namespace mpuevent::pages

#endif
