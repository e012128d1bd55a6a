#ifndef EVENT_SAFETEXT_H
#define EVENT_SAFETEXT_H

#include <string_view>

#include "event/BodyWriter.h"

namespace mpuevent {

/// Appends `text` to `out` with everything escaped but the tags of well-formed elements, as
/// `Quarn_Event::makeSafeString` tells.
void writeSafe(BodyWriter& out, std::string_view text);

}  // namespace mpuevent

#endif
