#ifndef MPUEVENT_TOOL_COMMANDLINE_H
#define MPUEVENT_TOOL_COMMANDLINE_H

#include <functional>
#include <string>
#include <variant>

#include "ExitCode.h"

namespace CLI {
class App;
}

namespace mpuevent::tool {

/// What the arguments ask for, ready to run.
using Command = std::function<ExitCode()>;

/// Text asked for, such as help.
struct Answer {
  std::string text;
};

/// The arguments make no sense, or there are none.
struct UsageError {
  std::string reason;  ///< empty if there are none
  std::string help;
};

std::variant<Command, Answer, UsageError> parseArguments(int argc, const char* const* argv);

/// Shows the program and then each of its commands to `show`, with all their options: man pages and
/// completions are made of them.
void showCommands(const std::function<void(CLI::App&)>& show);

}  // namespace mpuevent::tool

#endif
