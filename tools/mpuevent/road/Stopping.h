#ifndef MPUEVENT_TOOL_ROAD_STOPPING_H
#define MPUEVENT_TOOL_ROAD_STOPPING_H

namespace mpuevent::tool {

/// From now on the first SIGTERM or SIGINT asks the program to come to an end; the second ends it.
void heedStopSignals();

/// Whether there was one.
bool isStopAsked();

}  // namespace mpuevent::tool

#endif
