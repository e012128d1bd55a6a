#ifndef MPUEVENT_TOOL_FOLLOWOPTIONS_H
#define MPUEVENT_TOOL_FOLLOWOPTIONS_H

#include <string>

namespace CLI {
class App;
}

namespace mpuevent::tool {

/// How a command that reads a log goes on with it.
struct FollowOptions {
  bool follow = false;     ///< waits for what is still to come
  std::string cursorFile;  ///< keeps the place between runs; empty: from the beginning
};

/// `--follow`, `--cursor-file`. The options must last until the command has been parsed.
void addFollowOptions(CLI::App& command, FollowOptions& options);

}  // namespace mpuevent::tool

#endif
