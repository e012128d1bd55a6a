#ifndef MPUEVENT_FUZZ_EVENTPROPERTIES_H
#define MPUEVENT_FUZZ_EVENTPROPERTIES_H

#include <functional>
#include <memory>
#include <string_view>

#include "support/DecodedEvent.h"

namespace mpuevent::fuzz {

/// Decodes a record of 152 bytes or more with `decode`, never null, and requires what must hold
/// whatever the bytes: the same event each time, texts and time in proportion to the record, and
/// JSON that is valid and tells the same as the event.
support::EventFields decodeChecked(
    std::string_view record, const std::function<std::unique_ptr<Pegasus::Quarn_Event>()>& decode);

}  // namespace mpuevent::fuzz

#endif
