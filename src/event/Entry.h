#ifndef EVENT_ENTRY_H
#define EVENT_ENTRY_H

#include <MPUEvent/QuarnEvent.h>

#include <cstddef>
#include <string_view>

#include "event/BodyWriter.h"

namespace mpuevent {

// Entries as `QuarnEvent::addEntry` appends them. They are written without it, so that all of them
// become a String at once.

/// Writes the element of `addEntry(key, "%s", value)`. Each value becomes text by itself, whatever
/// stands beside it: bytes that are not UTF-8 are written as the UTF-8 of their Latin-1 characters.
void writeEntry(BodyWriter& entries, std::string_view key, std::string_view value);

/// Appends the entries to the Body, all of them by one call of the virtual `appendBody`.
void appendEntries(Pegasus::QuarnEvent& event, BodyWriter& entries);

}  // namespace mpuevent

#endif
