#ifndef MPUEVENT_LOG_FRAMING_LOGREADER_H
#define MPUEVENT_LOG_FRAMING_LOGREADER_H

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>

#include "log/accounting/Accounting.h"
#include "log/accounting/Finding.h"
#include "log/framing/LogUnit.h"
#include "log/framing/Lookahead.h"
#include "log/input/InputWindow.h"
#include "log/input/Packing.h"

namespace mpuevent::log {

/// Takes a log apart into records, in one pass, in constant memory and in linear time whatever the
/// bytes. What is no record is told and passed over; what follows is found again.
///
/// A unit that is sound by itself is given out when all of it is there and the source is idle;
/// while there is more to read, what follows it counts, too.
class LogReader {
 public:
  using Report = std::function<void(const Finding&)>;

  /// With a form other than automatic only that one is looked for, and an input that is not
  /// recognised is taken apart by the lengths in it. Findings are reported in the order of their
  /// offsets, before the unit that follows them; their bytes and the units' don't overlap, but for
  /// those of Kind::lengthsDisagree. Without `isIdle` all of the input counts at once. Records
  /// with strange serials are known by their lengths, which lead to the end of the input. Without
  /// `readAt` that can only be seen if all of it is in view; else their codes must do.
  LogReader(ReadBytes read, LogForm form, Report report, IsIdle isIdle = {},
            ReadBytesAt readAt = {});
  LogReader(const LogReader&) = delete;
  LogReader& operator=(const LogReader&) = delete;

  /// False when there is no further record.
  bool next(LogUnit& unit);

  /// What the bytes were up to the unit given out last, that included.
  const Accounting& accounting() const { return accounting_; }
  /// The errno value of the read that failed and so ended the input, or 0.
  int readError() const { return window_.error(); }
  /// How the input is packed as its first bytes tell, if it was found to be no log.
  Packing packing() const { return packing_; }

 private:
  /// Bytes since the last unit that are no unit's.
  struct Gap {
    std::uint64_t length = 0;
    std::uint64_t blankAtEnd = 0;  // how many at its end are 0 or 0xFF
    std::size_t statedLength = 0;  // of the unit that it seems to begin with, or 0
    bool tooShort = false;         // that unit's record is shorter than a header
  };

  // These decide on the unit at the position, and take nothing.
  std::optional<Candidate> peekUnitHere();
  std::optional<Candidate> peekUnitHere(LogForm form);
  bool peekIsWhole(const Candidate& unit);
  bool peekMayBeTaken(const Candidate& unit);
  std::optional<Candidate> peekUnitByLength(LogForm form);

  // Moves on to the next unit or the end of the input, or finds that what is here can be taken by
  // its lengths up to there: then nothing moves.
  void resynchronise();
  bool canTrustAllLengths();
  std::optional<std::uint64_t> endOfIntactRecords();
  std::optional<std::uint64_t> endOfLikelyRecords(std::size_t needed);
  bool canTrustLengths(std::size_t end, std::optional<std::size_t> next);
  void pass(std::size_t count);
  void take(LogUnit& unit, const Candidate& candidate);
  void closeGap(bool atEnd);
  void tellForm(LogForm form);  // if it has changed, once
  void tellLengths(const Candidate& candidate, std::size_t total);
  void tell(const Finding& finding);

  InputWindow window_;
  const ReadBytesAt readAt_;
  const LogForm wanted_;
  Lookahead ahead_;
  Report report_;
  Accounting accounting_;
  Gap gap_;
  Packing packing_ = Packing::none;
  std::optional<Candidate> upcoming_;     // what follows the unit given out last, if known
  std::optional<std::size_t> cutAt_;      // where a unit begins that the one here runs into
  LogForm trusted_ = LogForm::automatic;  // the form of what is taken by its lengths,
  std::uint64_t trustedTo_ = 0;           // up to this offset
  std::uint64_t searchedTo_ = 0;          // no unit begins before this offset
  std::uint64_t soundEvents_ = 0;         // given out for more than their lengths
  bool askedForAll_ = false;              // whether all lengths can be trusted
  bool changed_ = false;                  // the form has, which is told once
  std::size_t taken_ = 0;  // length of the unit given out last, which is still in view
};

}  // namespace mpuevent::log

#endif
