#ifndef MPUEVENT_TOOL_STORE_STORECOMMAND_H
#define MPUEVENT_TOOL_STORE_STORECOMMAND_H

#include <string>

#include "ExitCode.h"
#include "InputOptions.h"
#include "choosing/ChoosingOptions.h"

namespace CLI {
class App;
}

namespace mpuevent::tool {

/// `mpuevent store`.
struct StoreOptions {
  std::string target;
  InputOptions input;
  ChoosingOptions choosing;
  bool again = false;  ///< the records of the store itself are decoded anew
};

/// The options must last until the command has been parsed.
void addStoreOptions(CLI::App& command, StoreOptions& options);

/// Puts the events of the logs into the store, each once. Throws what Output throws, and StoreError
/// if the store fails; what was stored by then stays.
ExitCode store(const StoreOptions& options);

}  // namespace mpuevent::tool

#endif
