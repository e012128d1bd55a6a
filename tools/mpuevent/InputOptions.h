#ifndef MPUEVENT_TOOL_INPUTOPTIONS_H
#define MPUEVENT_TOOL_INPUTOPTIONS_H

#include "log/framing/LogUnit.h"
#include "log/input/InputNames.h"

namespace CLI {
class App;
}

namespace mpuevent::tool {

/// What every command that reads logs is told of them.
struct InputOptions {
  log::InputSelection selection;
  log::LogForm form = log::LogForm::automatic;
  bool verbose = false;  ///< a line a file on its bytes also where nothing is wrong
};

// What these fill in must last until the command has been parsed.

/// `--input`.
void addInputForm(CLI::App& command, log::LogForm& form);
/// `--input`, and files by name.
void addInputOptions(CLI::App& command, InputOptions& options);

}  // namespace mpuevent::tool

#endif
