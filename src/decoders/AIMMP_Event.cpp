#include <MPUEvent/AIMMP_Event.h>

namespace Pegasus {

AIMMP_Event::AIMMP_Event(EmpEvLogMsg_s* record, int length)
    : SYSTEM_CONFIGMP_Event(record, length) {}

AIMMP_Event::~AIMMP_Event() = default;

}  // namespace Pegasus
