#ifndef EVENT_OWNEVENTID_H
#define EVENT_OWNEVENTID_H

#include <MPUEvent/EmpEvLogMsg.h>

namespace mpuevent {

/// For a decoder that sets an EventID for whatever record: it hands the record to its base class
/// through this, directly. The base class then does not make the text of the event's number, which
/// nobody would see. `showUnknown` makes it where the number is to be shown.
Pegasus::EmpEvLogMsg_s* withOwnEventId(Pegasus::EmpEvLogMsg_s* record);

/// Whether the constructor that asks was called so.
bool takeOwnEventId();

}  // namespace mpuevent

#endif
