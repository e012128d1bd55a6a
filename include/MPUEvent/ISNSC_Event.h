#ifndef MPUEVENT_ISNSC_EVENT_H
#define MPUEVENT_ISNSC_EVENT_H

#include <MPUEvent/Quarn_Event.h>

namespace Pegasus {

/// Events of the iSNS client: its text messages and the configuration messages that it exchanges
/// with other processes. The EventID tells what was seen and how ("ICS REQ Sent"); everything in
/// the Body has passed `makeSafeString`. Each construction writes two trace lines of its own.
class MPUEVENT_API ISNSC_Event : public Quarn_Event {
 public:
  /// As `Quarn_Event`: a null record gives an empty event.
  MPUEVENT_PEGASUS_ABI ISNSC_Event(EmpEvLogMsg_s* record, int length);
  ~ISNSC_Event() override;
};

}  // namespace Pegasus

#endif
