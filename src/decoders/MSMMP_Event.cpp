#include <MPUEvent/MSMMP_Event.h>

#include "event/Undecoded.h"

namespace Pegasus {

MSMMP_Event::MSMMP_Event(EmpEvLogMsg_s* record, int length)
    : Quarn_Event(record, static_cast<unsigned int>(length)) {
  if (record == nullptr) return;
  mpuevent::showUndecoded(*this, {record, length}, {"MSMMP_Event", 99}, "Unhandled Event by MSMMP");
}

MSMMP_Event::~MSMMP_Event() = default;

String get_MSMMP_such_and_such_event_body(EmpEvLogMsg_s const*) { return mpuevent::sampleBody(); }

}  // namespace Pegasus
