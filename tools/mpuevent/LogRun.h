#ifndef MPUEVENT_TOOL_LOGRUN_H
#define MPUEVENT_TOOL_LOGRUN_H

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "ExitCode.h"
#include "InputOptions.h"
#include "Output.h"
#include "log/framing/LogReader.h"
#include "log/input/LogSource.h"

namespace mpuevent::tool {

/// Where a unit comes from.
struct LogFile {
  std::optional<std::string_view>
      name;                    ///< as given, or of a file in an archive; none: standard input
  std::string_view shownName;  ///< for people
  bool isOneOfSeveral;
};

/// Reads the logs that a command was given, one after another: what is wrong with them is reported
/// on standard error, with what `output` holds written before it, and makes the exit code.
class LogRun {
 public:
  using VisitUnit =
      std::function<void(const LogFile& file, const log::LogUnit& unit, std::uint64_t index)>;

  LogRun(const InputOptions& options, Output& output) : options_(options), output_(output) {}

  void forEachUnit(const VisitUnit& visit);

  ExitCode exitCode() const;

 private:
  void readInput(const std::string& input, bool several, const VisitUnit& visit);
  void readLog(const LogFile& file, const log::LogSource& source, const VisitUnit& visit);
  void tell(std::string_view name, const log::Finding& finding);
  void sumUp(const LogFile& file, const log::LogReader& reader);
  void reportAt(std::string_view name, std::uint64_t offset, std::string_view reason);
  void report(std::string_view name, std::string_view reason);

  const InputOptions& options_;
  Output& output_;
  bool anyUnit_ = false;
  bool failed_ = false;
  bool damaged_ = false;
};

}  // namespace mpuevent::tool

#endif
