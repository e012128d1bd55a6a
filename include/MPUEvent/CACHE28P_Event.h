#ifndef MPUEVENT_CACHE28P_EVENT_H
#define MPUEVENT_CACHE28P_EVENT_H

#include <MPUEvent/CACHE18P_Event.h>

namespace Pegasus {

/// Bugchecks of the second cache manager, decoded word for word as those of the first: also an
/// event id without a known meaning names `CACHE18P`.
class MPUEVENT_API CACHE28P_Event : public CACHE18P_Event {
 public:
  /// As `Quarn_Event`: a null record gives an empty event.
  MPUEVENT_PEGASUS_ABI CACHE28P_Event(EmpEvLogMsg_s* record, int length);
  ~CACHE28P_Event() override;
};

}  // namespace Pegasus

#endif
