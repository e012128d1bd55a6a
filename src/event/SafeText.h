#ifndef EVENT_SAFETEXT_H
#define EVENT_SAFETEXT_H

#include <string>
#include <string_view>

#include "event/BodyWriter.h"

namespace mpuevent {

/// The text with everything escaped but the tags of well-formed elements, as
/// `Quarn_Event::makeSafeString` tells.
Pegasus::String safeString(std::string_view text);
/// The same of a body, whose elements keep their marks.
Pegasus::String safeString(BodyWriter& raw);
/// The same, before it becomes a String.
std::string safeBytes(std::string_view text);

/// Appends the same to `out`.
void writeSafe(BodyWriter& out, std::string_view text);
/// Appends the text to `out` with everything escaped, tags too.
void writeEscaped(BodyWriter& out, std::string_view text);

}  // namespace mpuevent

#endif
