#ifndef MPUEVENT_TOOL_ROAD_ROADOPTIONS_H
#define MPUEVENT_TOOL_ROAD_ROADOPTIONS_H

#include <string>

#include "road/Road.h"

namespace CLI {
class App;
}

namespace mpuevent::tool {

/// How to get to the road, as every command that uses it is told.
struct RoadOptions {
  RoadAddress address;
  std::string passwordFile;

  /// Name of all workers that share the messages among them.
  std::string workers = "mpuevent";
};

/// `name` is the option with the servers. What is filled in must last until the command has been
/// parsed.
void addRoadOptions(CLI::App& command, const std::string& name, RoadOptions& options);
/// `--workers`.
void addWorkersOption(CLI::App& command, RoadOptions& options);

/// With the password in it. Throws RoadError if that cannot be read.
RoadAddress addressOf(const RoadOptions& options);

/// Tells on standard error, but not the same again and again. For any thread.
void tellOfRoad(std::string_view message);

}  // namespace mpuevent::tool

#endif
