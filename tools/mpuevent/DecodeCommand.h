#ifndef MPUEVENT_TOOL_DECODECOMMAND_H
#define MPUEVENT_TOOL_DECODECOMMAND_H

#include <string>

#include "ExitCode.h"
#include "FollowOptions.h"
#include "InputOptions.h"
#include "choosing/ChoosingOptions.h"
#include "forms/EventForm.h"

namespace mpuevent::tool {

enum class OutputForm { text, shortLine, line, jsonl, json, csv, raw };
enum class Colour { automatic, always, never };

/// `mpuevent decode`.
struct DecodeOptions {
  InputOptions input;
  FollowOptions following;
  ChoosingOptions choosing;
  bool count = false;  ///< only how many events are chosen
  OutputForm output = OutputForm::text;
  ShowPayload payload = ShowPayload::automatic;
  Colour colour = Colour::automatic;
  bool noBody = false;    ///< in JSON
  bool noFields = false;  ///< in JSON
  std::string columns;    ///< of JSON and CSV; empty: all
  bool noHeader = false;  ///< in CSV
  bool redact = false;
  bool exact = false;
  bool trace = false;
};

/// The options must last until the command has been parsed.
void addDecodeOptions(CLI::App& command, DecodeOptions& options);

/// Writes the events of the files to standard output and what is wrong to standard error. Throws
/// what Output throws; what has been written by then stays.
ExitCode decode(const DecodeOptions& options);

}  // namespace mpuevent::tool

#endif
