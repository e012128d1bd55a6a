#ifndef MPUEVENT_DDLMMP_EVENT_H
#define MPUEVENT_DDLMMP_EVENT_H

#include <MPUEvent/SYSTEM_CONFIGMP_Event.h>

namespace Pegasus {

/// Events of the distributed lock manager's process, which logs the records of the system
/// configuration process.
class MPUEVENT_API DDLMMP_Event : public SYSTEM_CONFIGMP_Event {
 public:
  /// As `Quarn_Event`: a null record gives an empty event.
  MPUEVENT_PEGASUS_ABI DDLMMP_Event(EmpEvLogMsg_s* record, int length);
  ~DDLMMP_Event() override;
};

}  // namespace Pegasus

#endif
