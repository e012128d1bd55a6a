#include <MPUEvent/OB1_Event.h>

#include "event/Undecoded.h"

namespace Pegasus {

OB1_Event::OB1_Event(EmpEvLogMsg_s* record, int length)
    : Quarn_Event(record, static_cast<unsigned int>(length)) {
  if (record == nullptr) return;
  mpuevent::showUndecoded(*this, {record, length}, {"OB1_Event", 99}, "Unhandled Event by OB1");
}

OB1_Event::~OB1_Event() = default;

String get_OB1_such_and_such_event_body(EmpEvLogMsg_s const*) { return mpuevent::sampleBody(); }

}  // namespace Pegasus
