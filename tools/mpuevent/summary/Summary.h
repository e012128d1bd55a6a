#ifndef MPUEVENT_TOOL_SUMMARY_SUMMARY_H
#define MPUEVENT_TOOL_SUMMARY_SUMMARY_H

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "log/accounting/Accounting.h"
#include "summary/Sequence.h"

namespace mpuevent::tool {

/// The order in which severities are shown; what is none of the three is "other".
enum Severity : std::size_t { error, warning, informational, other };

/// How many events of each severity.
struct SeverityCounts {
  std::array<std::uint64_t, 4> of{};

  std::uint64_t total() const { return of[error] + of[warning] + of[informational] + of[other]; }
};

/// The earliest and the latest of some timestamps.
struct TimeSpan {
  std::uint32_t first = UINT32_MAX;
  std::uint32_t last = 0;

  void add(std::uint32_t timestamp) {
    if (timestamp < first) first = timestamp;
    if (timestamp > last) last = timestamp;
  }
};

struct FileSummary {
  std::optional<std::string> name;  ///< UTF-8; none: standard input
  bool messages = false;            ///< there are records in messages
  bool records = false;             ///< there are bare records
  log::Accounting accounting;       ///< of all of the file
  std::uint64_t events = 0;         ///< chosen
  std::vector<log::Finding> damage;
  std::uint64_t moreDamage = 0;  ///< how many there are besides
};

struct LogSummary {
  std::string enclosureSerial;
  std::string controllerSerial;
  std::uint32_t controllerSlot = 0;
  std::uint32_t logInstance = 0;
  std::uint64_t events = 0;  ///< chosen
  Sequence sequence;         ///< of all of the log
};

struct SourceSummary {
  unsigned code = 0;
  std::string name;
  std::string decoder;  ///< the class of its events
  SeverityCounts events;
  std::vector<unsigned> undecodedCodes;  ///< the event codes that the decoder has no layout for

  bool hasDecoder() const { return decoder != "Quarn_Event"; }
};

/// Events of one source, event id and Summary.
struct KindSummary {
  unsigned sourceCode = 0;
  std::string source;
  unsigned type = 0;       ///< of the first
  unsigned eventCode = 0;  ///< of the first
  std::string eventId;
  std::string summary;
  std::uint64_t events = 0;
  TimeSpan time;
};

struct ErrorSummary {
  std::optional<std::string> file;
  std::uint64_t index = 0;
  std::uint64_t offset = 0;
  std::string controllerSerial;
  std::uint32_t controllerSlot = 0;
  std::uint32_t sequenceId = 0;
  std::uint32_t timestamp = 0;
  std::string source;
  std::string eventId;
  std::string summary;
};

/// The events of a controller over the time of all.
struct TimeLanes {
  struct Column {
    SeverityCounts events;
    bool hole = false;  ///< ids of the sequence are missing here
  };

  std::string controllerSerial;
  std::optional<std::uint32_t> controllerSlot;  ///< none: several controllers together
  std::vector<Column> columns;
};

struct TimeAxis {
  std::uint64_t begin = 0;  ///< of the first column
  std::uint64_t end = 0;    ///< behind the last
  std::size_t columns = 0;
  std::vector<TimeLanes> controllers;
};

/// Events and more that are counted but not told apart, as there is no end of them.
struct LeftOut {
  std::uint64_t files = 0;
  std::uint64_t logEvents = 0;   ///< of logs beyond those listed
  std::uint64_t kindEvents = 0;  ///< of kinds beyond those listed
};

/// What is in some logs, in a size that does not grow with theirs. All texts are UTF-8; those of
/// the firmware have passed through FirmwareText and may hold control characters.
struct Summary {
  std::vector<FileSummary> files;
  log::Accounting accounting;  ///< of all files
  SeverityCounts events;       ///< chosen
  TimeSpan time;
  std::vector<LogSummary> logs;
  std::vector<SourceSummary> sources;  ///< most errors first
  std::vector<KindSummary> kinds;      ///< most frequent first
  std::vector<ErrorSummary> lastErrors;
  TimeAxis axis;
  LeftOut leftOut;
};

}  // namespace mpuevent::tool

#endif
