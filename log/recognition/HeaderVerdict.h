#ifndef MPUEVENT_LOG_RECOGNITION_HEADERVERDICT_H
#define MPUEVENT_LOG_RECOGNITION_HEADERVERDICT_H

#include "event/RecordView.h"
#include "log/recognition/LogProfile.h"

namespace mpuevent::log {

/// How much speaks for 152 bytes being a record's header, weakest first.
enum class Verdict {
  none,      ///< nothing does
  possible,  ///< something does: good enough between two places that are certain
  byCodes,   ///< source, type and category are known ones, the serials are no text
  byText,    ///< the serials are NUL-padded text
  sound,     ///< both are, or the serials are those of earlier records
};

/// Judges the header alone; `record` holds all of it.
Verdict judgeHeader(const Record& record, const LogProfile& profile);

/// Whether the serials are those of earlier records, and not just empty; `found` is what the
/// profile found of the record.
inline bool isOfKnownWriter(const Record& record, const LogProfile& profile,
                            FoundWriter found = {}) {
  return (record.u8(Record::enclosureSerialNumberAt) != 0 ||
          record.u8(Record::controllerSerialNumberAt) != 0) &&
         (found.isKnown() || profile.knowsSerials(record));
}

/// How many of source, type and category are among those that the firmware has.
int knownCodes(const Record& record);

/// Whether these three and the slot of the controller are all as the firmware has them.
bool hasSmallNumbers(const Record& record);

/// A quick look at the 152 bytes: false if judgeHeader() would find nothing that a search may take.
bool mayBeHeader(const unsigned char* bytes, const LogProfile& profile);

/// Whether the serials come back after a few bytes, as in a fill pattern; then it means little that
/// they come back in the next record.
bool serialsAreAPattern(const Record& record);

/// Whether all `size` bytes are 0, or all are 0xFF.
bool isBlank(const unsigned char* bytes, std::size_t size);

}  // namespace mpuevent::log

#endif
