#include <MPUEvent/ES_ADAPTERMP.h>

#include "event/Undecoded.h"

namespace Pegasus {

String get_ES_ADAPTERMP_such_and_such_event_body(EmpEvLogMsg_s const*) {
  return mpuevent::sampleBody();
}

}  // namespace Pegasus
