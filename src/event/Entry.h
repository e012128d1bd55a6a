#ifndef EVENT_ENTRY_H
#define EVENT_ENTRY_H

#include <MPUEvent/QuarnEvent.h>

#include <cstddef>
#include <string_view>

#include "event/BodyWriter.h"

namespace mpuevent {

// Entries as `QuarnEvent::addEntry` appends them, written without it so that all of them become a
// String at once.

/// The element of `addEntry(key, "%s", value)`. Bytes that are not UTF-8 are written as the UTF-8
/// of their Latin-1 characters: each value becomes text by itself, whatever stands beside it.
void writeEntry(BodyWriter& entries, std::string_view key, std::string_view value);

/// For a value that is written piece by piece: repairs its end as `addEntry` does. `valueStart` is
/// the size of `entries` when the value began.
void repairEnd(BodyWriter& entries, std::size_t valueStart);

/// Appends the entries to the Body, all of them by one call of the virtual `appendBody`.
void appendEntries(Pegasus::QuarnEvent& event, BodyWriter entries);

}  // namespace mpuevent

#endif
