#ifndef MPUEVENT_CACHE18P_EVENT_H
#define MPUEVENT_CACHE18P_EVENT_H

#include <MPUEvent/Quarn_Event.h>

namespace Pegasus {

/// Bugchecks of the first cache manager. The EventID is "Bugcheck" and the event id; the Summary
/// says what went wrong, and the Body shows the structures that were logged with it. An event id
/// without a known meaning gives the payload in hex, and a trace line.
class MPUEVENT_API CACHE18P_Event : public Quarn_Event {
 public:
  /// As `Quarn_Event`: a null record gives an empty event.
  MPUEVENT_PEGASUS_ABI CACHE18P_Event(EmpEvLogMsg_s* record, int length);
  ~CACHE18P_Event() override;
};

}  // namespace Pegasus

#endif
