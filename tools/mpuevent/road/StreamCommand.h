#ifndef MPUEVENT_TOOL_ROAD_STREAMCOMMAND_H
#define MPUEVENT_TOOL_ROAD_STREAMCOMMAND_H

#include <cstdint>

#include "ExitCode.h"
#include "road/RoadOptions.h"

namespace mpuevent::tool {

/// `mpuevent stream`.
struct StreamOptions {
  RoadOptions road;
  bool create = false;
  unsigned streams = 1;
  unsigned replicas = 3;
  std::uint32_t keepHours = 168;
  std::uint32_t duplicatesSeconds = 120;
  std::int64_t mostMegabytes = 0;  ///< 0: any
};

/// The options must last until the command has been parsed.
void addStreamOptions(CLI::App& command, StreamOptions& options);

/// Tells how the streams are, which it makes first if asked to.
ExitCode stream(const StreamOptions& options);

}  // namespace mpuevent::tool

#endif
