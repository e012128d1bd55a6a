#ifndef MPUEVENT_TOOL_ROAD_WORKCOMMAND_H
#define MPUEVENT_TOOL_ROAD_WORKCOMMAND_H

#include <cstdint>
#include <optional>
#include <string>

#include "ExitCode.h"
#include "road/RoadOptions.h"

namespace mpuevent::tool {

/// `mpuevent work`.
struct WorkOptions {
  RoadOptions road;
  std::string store;
  unsigned jobs = 1;
  std::optional<std::uint32_t> idle;  ///< seconds without a message after which it ends
};

/// The options must last until the command has been parsed.
void addWorkOptions(CLI::App& command, WorkOptions& options);

/// Takes messages from the road into the store until it is told to stop.
ExitCode work(const WorkOptions& options);

}  // namespace mpuevent::tool

#endif
