#ifndef MPUEVENT_TOOL_OPTIONS_H
#define MPUEVENT_TOOL_OPTIONS_H

#include <string>
#include <variant>
#include <vector>

#include "log/framing/LogReader.h"

namespace mpuevent::tool {

enum class OutputForm { text, line, jsonl };

/// `mpuevent decode`.
struct DecodeOptions {
  std::vector<std::string> files;  ///< "-" is standard input; never empty
  log::LogForm input = log::LogForm::automatic;
  OutputForm output = OutputForm::text;
  bool trace = false;
};

/// Text asked for, such as help.
struct Answer {
  std::string text;
};

/// The arguments make no sense, or there are none.
struct UsageError {
  std::string reason;  ///< empty if there are none
  std::string help;
};

std::variant<DecodeOptions, Answer, UsageError> parseArguments(int argc, const char* const* argv);

}  // namespace mpuevent::tool

#endif
