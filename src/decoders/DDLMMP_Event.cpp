#include <MPUEvent/DDLMMP_Event.h>

namespace Pegasus {

DDLMMP_Event::DDLMMP_Event(EmpEvLogMsg_s* record, int length)
    : SYSTEM_CONFIGMP_Event(record, length) {}

DDLMMP_Event::~DDLMMP_Event() = default;

}  // namespace Pegasus
