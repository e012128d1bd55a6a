#ifndef MPUEVENT_TOOL_ROAD_SENDCOMMAND_H
#define MPUEVENT_TOOL_ROAD_SENDCOMMAND_H

#include <cstdint>
#include <optional>

#include "ExitCode.h"
#include "FollowOptions.h"
#include "InputOptions.h"
#include "road/RoadOptions.h"

namespace mpuevent::tool {

/// `mpuevent send`.
struct SendOptions {
  RoadOptions road;
  InputOptions input;
  FollowOptions following;
  bool again = false;                   ///< also what the servers have
  std::optional<std::uint32_t> giveUp;  ///< seconds in which nothing is taken
};

/// The options must last until the command has been parsed.
void addSendOptions(CLI::App& command, SendOptions& options);

/// Sends the records of the files, and moves the cursor behind what the road has.
ExitCode send(const SendOptions& options);

}  // namespace mpuevent::tool

#endif
