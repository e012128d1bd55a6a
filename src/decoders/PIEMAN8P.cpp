#include <MPUEvent/PIEMAN8P.h>

#include "event/Undecoded.h"

namespace Pegasus {

String get_PIEMAN8P_such_and_such_event_body(EmpEvLogMsg_s const*) {
  return mpuevent::sampleBody();
}

}  // namespace Pegasus
