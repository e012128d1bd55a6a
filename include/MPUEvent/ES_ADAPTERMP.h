#ifndef MPUEVENT_ES_ADAPTERMP_H
#define MPUEVENT_ES_ADAPTERMP_H

#include <MPUEvent/EmpEvLogMsg.h>
#include <MPUEvent/Export.h>
#include <Pegasus/Common/String.h>

namespace Pegasus {

/// "Sample Body text", whatever the record; it may be null.
MPUEVENT_API String get_ES_ADAPTERMP_such_and_such_event_body(EmpEvLogMsg_s const* record);

}  // namespace Pegasus

#endif
