#ifndef MPUEVENT_TOOL_SUMMARY_COLLECTOR_H
#define MPUEVENT_TOOL_SUMMARY_COLLECTOR_H

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "LogRun.h"
#include "summary/FirmwareText.h"
#include "summary/Kinds.h"
#include "summary/Summary.h"
#include "summary/TimeBins.h"

namespace mpuevent::tool {

/// Makes the summary of logs, event by event, in memory that does not grow with them.
class Collector {
 public:
  /// What it is given was redacted, or null. It must last.
  explicit Collector(const Redaction* redaction = nullptr)
      : firmwareText_(redaction), kinds_(firmwareText_) {}

  void beginFile(const LogFile& file);
  /// Any unit of the file, chosen or not.
  void read(const log::LogUnit& unit);
  void find(const LogFile& file, const log::Finding& finding);
  void endFile(const LogFile& file, const log::Accounting& accounting);
  /// A unit that is chosen.
  void take(const LogFile& file, const log::LogUnit& unit, std::uint64_t index);

  Summary finish();

 private:
  static constexpr std::size_t mostFiles = 1000;
  static constexpr std::size_t mostDamage = 5000;  // of all files
  static constexpr std::size_t mostLogs = 256;
  static constexpr std::size_t mostGaps = 20000;     // of all logs
  static constexpr std::size_t mostControllers = 8;  // with lanes of their own
  static constexpr std::size_t mostErrors = 10;
  static constexpr std::size_t mostColumns = 240;

  // What a record tells before its sequence id: both serials, filled up with NUL, slot, and log
  // instance.
  static constexpr std::size_t identitySize = Record::sequenceIdAt;
  using Identity = std::array<char, identitySize>;

  struct Log {
    LogSummary summary;
    std::size_t group;
  };
  /// The last errors are kept in the same places over and over.
  struct Error {
    std::size_t file = 0;
    std::uint64_t index = 0;
    std::uint64_t offset = 0;
    std::vector<unsigned char> header;
    std::vector<unsigned char> record;
  };

  FileSummary* fileOf(const LogFile& file);
  Log* logOf(const log::LogUnit& unit);
  Log* addLog(const Record& record, const Identity& identity);
  std::size_t groupOf(const LogSummary& log);
  void keepError(const LogFile& file, const log::LogUnit& unit, std::uint64_t index);
  ErrorSummary describe(const Error& error) const;
  void fillAxis();

  Summary summary_;
  TimeBins bins_;
  const FirmwareText firmwareText_;
  Kinds kinds_;
  std::array<SeverityCounts, 256> sources_{};
  std::vector<Log> logs_;
  std::unordered_map<std::string, std::size_t> logsByIdentity_;
  Identity lastIdentity_{};
  std::optional<std::size_t> lastLog_;
  std::vector<TimeLanes> controllers_;
  std::size_t gaps_ = 0;
  std::size_t damage_ = 0;
  std::array<Error, mostErrors> errors_;
  std::uint64_t errorCount_ = 0;
};

}  // namespace mpuevent::tool

#endif
