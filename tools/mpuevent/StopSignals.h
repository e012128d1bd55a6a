#ifndef MPUEVENT_TOOL_STOPSIGNALS_H
#define MPUEVENT_TOOL_STOPSIGNALS_H

namespace mpuevent::tool {

/// From its construction on the first SIGINT, SIGTERM or SIGHUP does not end the program, but is
/// remembered; the second one ends it. They interrupt system calls. One a program.
class StopSignals {
 public:
  StopSignals();

  static bool came();
};

}  // namespace mpuevent::tool

#endif
