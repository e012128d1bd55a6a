#ifndef MPUEVENT_TOOL_ROAD_AUDITCOMMAND_H
#define MPUEVENT_TOOL_ROAD_AUDITCOMMAND_H

#include <string>

#include "ExitCode.h"
#include "InputOptions.h"
#include "choosing/ChoosingOptions.h"

namespace mpuevent::tool {

enum class AuditOutput { text, raw };

/// `mpuevent audit`.
struct AuditOptions {
  std::string store;
  InputOptions input;
  ChoosingOptions choosing;  ///< which of the files' records are looked for
  bool noGaps = false;
  AuditOutput output = AuditOutput::text;
};

/// The options must last until the command has been parsed.
void addAuditOptions(CLI::App& command, AuditOptions& options);

/// Tells what the store lacks. Exit code 1 if there is anything.
ExitCode audit(const AuditOptions& options);

}  // namespace mpuevent::tool

#endif
