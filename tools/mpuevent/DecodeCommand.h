#ifndef MPUEVENT_TOOL_DECODECOMMAND_H
#define MPUEVENT_TOOL_DECODECOMMAND_H

#include "Options.h"

namespace mpuevent::tool {

enum ExitCode : int {
  decodedAll = 0,
  nothingSelected = 1,
  failed = 2,  ///< wrong usage, input not readable, output not writable
  inputDamaged = 3,
};

/// Writes the events of the files to standard output and what is wrong to standard error. Throws
/// what Output throws; what has been written by then stays.
ExitCode decode(const DecodeOptions& options);

}  // namespace mpuevent::tool

#endif
