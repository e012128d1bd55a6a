#ifndef MPUEVENT_AIMMP_EVENT_H
#define MPUEVENT_AIMMP_EVENT_H

#include <MPUEvent/SYSTEM_CONFIGMP_Event.h>

namespace Pegasus {

/// Events of the AIM process, which logs the records of the system configuration process.
class MPUEVENT_API AIMMP_Event : public SYSTEM_CONFIGMP_Event {
 public:
  /// As `Quarn_Event`: a null record gives an empty event.
  MPUEVENT_PEGASUS_ABI AIMMP_Event(EmpEvLogMsg_s* record, int length);
  ~AIMMP_Event() override;
};

}  // namespace Pegasus

#endif
