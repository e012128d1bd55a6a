#include <MPUEvent/OB0_Event.h>

#include "event/Undecoded.h"

namespace Pegasus {

OB0_Event::OB0_Event(EmpEvLogMsg_s* record, int length)
    : Quarn_Event(record, static_cast<unsigned int>(length)) {
  if (record == nullptr) return;
  mpuevent::showUndecoded(*this, {record, length}, {"OB0_Event", 99}, "Unhandled Event by OB0");
}

OB0_Event::~OB0_Event() = default;

String get_OB0_such_and_such_event_body(EmpEvLogMsg_s const*) { return mpuevent::sampleBody(); }

}  // namespace Pegasus
