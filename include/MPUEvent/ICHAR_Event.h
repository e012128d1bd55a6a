#ifndef MPUEVENT_ICHAR_EVENT_H
#define MPUEVENT_ICHAR_EVENT_H

#include <MPUEvent/Quarn_Event.h>

namespace Pegasus {

/// Events of the ICHAR module, of which no layout is known: the Body is the payload in hex.
class MPUEVENT_API ICHAR_Event : public Quarn_Event {
 public:
  /// As `Quarn_Event`: a null record gives an empty event.
  MPUEVENT_PEGASUS_ABI ICHAR_Event(EmpEvLogMsg_s* record, int length);
  ~ICHAR_Event() override;
};

/// "Sample Body text", whatever the record; it may be null.
MPUEVENT_API String get_ICHAR_such_and_such_event_body(EmpEvLogMsg_s const* record);

}  // namespace Pegasus

#endif
