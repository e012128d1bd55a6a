#ifndef MPUEVENT_LOG_ACCOUNTING_FINDING_H
#define MPUEVENT_LOG_ACCOUNTING_FINDING_H

#include <cstddef>
#include <cstdint>
#include <string>

namespace mpuevent::log {

/// Something about the bytes of a log that its reader should be told.
struct Finding {
  enum class Kind {
    skipped,          ///< bytes in which no event was found
    cutOff,           ///< a message or record of `statedLength` bytes, of which `length` are there
    tooShort,         ///< a message whose record is shorter than a record's header
    notALog,          ///< the whole input: nothing in it is a log
    lengthsDisagree,  ///< an event's bytes: the message says `statedLength`, its record
                      ///< `lengthFromRecord`
    padding,          ///< zeros or 0xFF behind the last event
    nowMessages,      ///< the records end here and messages follow
    nowRecords,       ///< the messages end here and records follow
  };

  Kind kind = Kind::skipped;
  std::uint64_t offset = 0;  ///< in the input
  std::uint64_t length = 0;  ///< the bytes that it is about; 0 for a change of form
  std::size_t statedLength = 0;
  std::size_t lengthFromRecord = 0;
  bool toTheEnd = false;  ///< no event follows in the input

  /// Whether the bytes are passed over because they are no event.
  bool passesOver() const;
  /// Whether something is wrong with the log.
  bool isDamage() const { return passesOver() || kind == Kind::lengthsDisagree; }

  bool operator==(const Finding&) const = default;
};

/// The finding in words, without its offset.
std::string describe(const Finding& finding);

}  // namespace mpuevent::log

#endif
