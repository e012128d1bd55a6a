#ifndef MPUEVENT_TOOL_SUMMARY_SUMMARYCOMMAND_H
#define MPUEVENT_TOOL_SUMMARY_SUMMARYCOMMAND_H

#include <string>

#include "ExitCode.h"
#include "InputOptions.h"
#include "choosing/ChoosingOptions.h"

namespace mpuevent::tool {

enum class SummaryOutput { text, json };

/// `mpuevent summary`.
struct SummaryOptions {
  InputOptions input;
  ChoosingOptions choosing;
  SummaryOutput output = SummaryOutput::text;
  bool redact = false;
  std::string page;  ///< where a page goes besides; empty: nowhere
};

/// The options must last until the command has been parsed.
void addSummaryOptions(CLI::App& command, SummaryOptions& options);

/// Writes what is in the logs. Throws what Output throws.
ExitCode summary(const SummaryOptions& options);

}  // namespace mpuevent::tool

#endif
