#ifndef EVENT_UNDECODED_H
#define EVENT_UNDECODED_H

#include <MPUEvent/Quarn_Event.h>

#include "event/RecordView.h"
#include "event/Trace.h"

namespace mpuevent {

/// The payload in hex as the element `Hex`: the bytes that are held, at most `evStructLength`.
Pegasus::String hexBody(const Record& record);

/// What a decoder makes of a record that it has no layout for: a trace line with the event id, a
/// fixed Summary, and the hex body. The EventID stays as it is.
void showUndecoded(Pegasus::Quarn_Event& event, const Record& record, TraceSite site,
                   const char* summary, NumberBase idBase = NumberBase::ofStream,
                   const char* traceText = "Unknown EventID: 0x");

/// The same for a decoder that has no EventID for this record: the number becomes that.
void showUnknown(Pegasus::Quarn_Event& event, const Record& record, TraceSite site,
                 const char* summary, NumberBase idBase = NumberBase::ofStream,
                 const char* traceText = "Unknown EventID: 0x");

}  // namespace mpuevent

#endif
