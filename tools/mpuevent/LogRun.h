#ifndef MPUEVENT_TOOL_LOGRUN_H
#define MPUEVENT_TOOL_LOGRUN_H

#include <chrono>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "ExitCode.h"
#include "FollowOptions.h"
#include "InputOptions.h"
#include "Output.h"
#include "choosing/ChoosingOptions.h"
#include "choosing/Grep.h"
#include "log/choosing/KeptUnit.h"
#include "log/choosing/Merge.h"
#include "log/following/Cursor.h"
#include "log/following/FollowedFile.h"
#include "log/framing/LogReader.h"
#include "log/input/InputFile.h"
#include "log/input/LogSource.h"
#include "redaction/LearntInputs.h"
#include "redaction/Redaction.h"

namespace mpuevent::tool {

/// Where a unit comes from.
struct LogFile {
  std::optional<std::string_view>
      name;                    ///< as given, or of a file in an archive; none: standard input
  std::string_view shownName;  ///< for people
  bool isOneOfSeveral;
  std::size_t number;  ///< in the order in which they are read, from 0
};

/// Reads the logs and stores that a command was given, one after another, and chooses among their
/// events: what is wrong with the logs is reported on standard error, with what `output` holds
/// written before it, and makes the exit code.
class LogRun {
 public:
  using VisitUnit =
      std::function<void(const LogFile& file, const log::LogUnit& unit, std::uint64_t index)>;

  using VisitFile = std::function<void(const LogFile& file)>;

  /// What else a command may want to know of the logs; each may be empty.
  struct Watch {
    /// Every unit, chosen or not, before it is visited.
    std::function<void(const LogFile& file, const log::LogUnit& unit)> read;
    std::function<void(const LogFile& file, const log::Finding& finding)> find;
    /// No more of the file is read.
    std::function<void(const LogFile& file, const log::Accounting& accounting)> endFile;
    /// Reading the file failed, maybe before its end.
    std::function<void(const LogFile& file)> fail;
    /// More input may be long in coming, or the cursor is to move behind all that was visited:
    /// whether all of that is safe. If not the cursor stays.
    std::function<bool()> settle;
  };

  /// The options must last.
  LogRun(const InputOptions& input, const ChoosingOptions& choosing, Output& output);

  /// Visits the events that are chosen, in the order that is chosen; `index` is the event's place
  /// in its file. Before the events of a file come it is given to `beginFile`, whether it has any
  /// or not; files of which events are kept for an order of their own are begun before.
  void forEachUnit(const VisitUnit& visit, const VisitFile& beginFile = {});

  /// Units are given to the visitors redacted; what chooses events sees them as they are. All logs
  /// are read twice, standard input by way of a temporary file. It must last.
  void redact(Redaction& redaction) { redaction_ = &redaction; }

  /// The one log is read as it grows, or from where somebody left off. Throws
  /// `std::invalid_argument` if the options don't suit one another, and what log::Cursor throws.
  void follow(const FollowOptions& options);

  /// Closes the output; then the cursor, if there is one, may tell that all was written.
  void finish();

  /// For a visitor: no further event is wanted.
  void stop() { stopped_ = true; }

  /// Records that are longer than what can be decoded of them are no damage from now on.
  void acceptLongRecords() { longRecordsAccepted_ = true; }

  /// For the runs that follow.
  void watch(Watch watch) { watch_ = std::move(watch); }

  /// The event of the unit that is being visited, if choosing has decoded it.
  std::unique_ptr<Pegasus::Quarn_Event> takeDecoded();

  ExitCode exitCode() const;

 private:
  /// As many events were visited as are wanted.
  struct Enough {};
  /// What a LogFile refers to.
  struct FileNames {
    std::optional<std::string> name;
    std::string shownName;
    bool isOneOfSeveral;
    std::size_t number;
  };

  void readAll();
  void readFollowed(const std::string& name);
  void beginBehindCursor(log::FollowedFile& file, const std::string& name);
  void beforeWaiting();
  bool settle() const { return !watch_.settle || watch_.settle(); }
  void saveCursor();
  bool keepsLast() const { return choosing_.last && !showedLast_; }
  void readInput(const std::string& input, bool several);
  void readInput(LearntInput& input, bool several);
  LearntInput learnInput(const std::string& input);
  void warnOfTerminal(const std::string& input);
  /// At most `most` bytes of it.
  void readFile(const std::string& input, const log::InputFile& file, std::uint64_t most,
                bool several);
  void readStore(const std::string& name, bool several);
  void readLog(const LogFile& file, const log::LogSource& source);
  void readUnits(const LogFile& file, log::LogReader& reader);
  bool isChosen(const log::LogUnit& unit);
  void take(const LogFile& file, const log::LogUnit& unit, std::uint64_t index);
  std::size_t keep(const LogFile& file);
  void visit(const LogFile& file, const log::LogUnit& unit, std::uint64_t index);
  void endIfEnough() const;
  void visitKept();
  void visitKept(const log::KeptUnit& unit);
  void tell(const LogFile& file, const log::Finding& finding);
  void sumUp(const LogFile& file, const log::LogReader& reader);
  void reportAt(std::string_view name, std::uint64_t offset, std::string_view reason);
  void report(std::string_view name, std::string_view reason);

  const InputOptions& options_;
  const ChoosingOptions& choosing_;
  Output& output_;
  std::unique_ptr<Grep> grep_;                     // null: no matter
  std::unique_ptr<Grep> notGrep_;                  // null: no matter
  std::unique_ptr<Pegasus::Quarn_Event> decoded_;  // to choose by; null: no need
  Redaction* redaction_ = nullptr;                 // null: nothing is to be redacted
  VisitUnit visit_;
  VisitFile beginFile_;
  Watch watch_;
  std::size_t files_ = 0;
  std::uint64_t visited_ = 0;
  std::vector<FileNames> keptFiles_;
  std::deque<log::KeptUnit> last_;
  log::Merge merge_;
  bool failed_ = false;
  bool damaged_ = false;
  bool longRecordsAccepted_ = false;
  bool stopped_ = false;
  bool follows_ = false;
  bool showedLast_ = false;  // those that were there before it waited for more
  std::optional<log::Cursor> cursor_;
  std::chrono::steady_clock::time_point saved_;
  std::uint64_t begin_ = 0;  // of what is read, in its file,
  std::uint64_t index_ = 0;  // and the number of its first event
};

}  // namespace mpuevent::tool

#endif
