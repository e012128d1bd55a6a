#include <MPUEvent/HACCMP_Event.h>

#include "event/Undecoded.h"

namespace Pegasus {

HACCMP_Event::HACCMP_Event(EmpEvLogMsg_s* record, int length)
    : Quarn_Event(record, static_cast<unsigned int>(length)) {
  if (record == nullptr) return;
  mpuevent::showUndecoded(*this, {record, length}, {"HACCMP_Event", 99},
                          "Unhandled Event by HACCMP");
}

HACCMP_Event::~HACCMP_Event() = default;

String get_HACCMP_such_and_such_event_body(EmpEvLogMsg_s const*) { return mpuevent::sampleBody(); }

}  // namespace Pegasus
