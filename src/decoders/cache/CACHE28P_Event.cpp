#include <MPUEvent/CACHE28P_Event.h>

namespace Pegasus {

CACHE28P_Event::CACHE28P_Event(EmpEvLogMsg_s* record, int length)
    : CACHE18P_Event(record, length) {}

CACHE28P_Event::~CACHE28P_Event() = default;

}  // namespace Pegasus
