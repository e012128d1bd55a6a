#ifndef MPUEVENT_TOOL_EXITCODE_H
#define MPUEVENT_TOOL_EXITCODE_H

namespace mpuevent::tool {

/// The same for every command.
enum ExitCode : int {
  decodedAll = 0,
  nothingDecoded = 1,
  failed = 2,  ///< wrong usage, input not readable, output not writable
  inputDamaged = 3,
};

}  // namespace mpuevent::tool

#endif
