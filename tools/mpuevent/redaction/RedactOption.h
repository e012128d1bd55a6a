#ifndef MPUEVENT_TOOL_REDACTOPTION_H
#define MPUEVENT_TOOL_REDACTOPTION_H

namespace CLI {
class App;
}

namespace mpuevent::tool {

/// `--redact`. `redact` must last until the command has been parsed.
void addRedactOption(CLI::App& command, bool& redact);

}  // namespace mpuevent::tool

#endif
