#ifndef MPUEVENT_TOOL_EXPLAIN_EXPLAINCOMMAND_H
#define MPUEVENT_TOOL_EXPLAIN_EXPLAINCOMMAND_H

#include <cstdint>
#include <optional>
#include <string>

#include "ExitCode.h"
#include "log/framing/LogReader.h"

namespace CLI {
class App;
}

namespace mpuevent::tool {

enum class ExplainOutput { text, json };

/// `mpuevent explain`. Of the three ways to name the event at most one is given.
struct ExplainOptions {
  std::string file = "-";  ///< "-" is standard input
  log::LogForm form = log::LogForm::automatic;
  bool hex = false;                       ///< the input is hex text
  std::optional<std::uint64_t> at;        ///< an offset that the event's bytes hold
  std::optional<std::uint64_t> index;     ///< of the event in the file, from 0
  std::optional<std::uint64_t> sequence;  ///< its sequence id
  ExplainOutput output = ExplainOutput::text;
};

/// The options must last until the command has been parsed.
void addExplainOptions(CLI::App& command, ExplainOptions& options);

/// Writes which bytes of the event make which of its fields. Throws what Output throws.
ExitCode explain(const ExplainOptions& options);

}  // namespace mpuevent::tool

#endif
