#ifndef MPUEVENT_TOOL_CHOOSINGOPTIONS_H
#define MPUEVENT_TOOL_CHOOSINGOPTIONS_H

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "forms/Dates.h"
#include "log/choosing/Choice.h"

namespace CLI {
class App;
}

namespace mpuevent::tool {

/// Which of the events in its logs a command is to take, and in what order.
struct ChoosingOptions {
  log::Choice choice;
  std::vector<std::string> patterns;     ///< one must match; empty: no matter
  std::vector<std::string> notPatterns;  ///< none may match
  bool ignoreCase = false;
  std::optional<std::uint64_t> first;  ///< how many at most, the first
  std::optional<std::uint64_t> last;   ///< the last
  bool merge = false;                  ///< all files in one order
  std::optional<Moment> epoch;         ///< when timestamps count from, if known

  std::optional<Moment> timeOf(std::uint32_t timestamp) const {
    return epoch ? std::optional<Moment>(*epoch + timestamp) : std::nullopt;
  }
};

/// The options must last until the command has been parsed.
void addChoosingOptions(CLI::App& command, ChoosingOptions& options);

}  // namespace mpuevent::tool

#endif
