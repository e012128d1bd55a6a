#include <MPUEvent/DRIVEADMP_Event.h>

#include "event/Undecoded.h"

namespace Pegasus {

DRIVEADMP_Event::DRIVEADMP_Event(EmpEvLogMsg_s* record, int length)
    : Quarn_Event(record, static_cast<unsigned int>(length)) {
  if (record == nullptr) return;
  mpuevent::showUndecoded(*this, {record, length}, {"DRIVEADMP_Event", 96},
                          "Unhandled Event by DRIVEADMP");
}

DRIVEADMP_Event::~DRIVEADMP_Event() = default;

String get_DRIVEADMP_such_and_such_event_body(EmpEvLogMsg_s const*) {
  return mpuevent::sampleBody();
}

}  // namespace Pegasus
