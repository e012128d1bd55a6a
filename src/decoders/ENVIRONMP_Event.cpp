#include <MPUEvent/ENVIRONMP_Event.h>

#include "event/Undecoded.h"

namespace Pegasus {

ENVIRONMP_Event::ENVIRONMP_Event(EmpEvLogMsg_s* record, int length)
    : Quarn_Event(record, static_cast<unsigned int>(length)) {
  if (record == nullptr) return;
  mpuevent::showUndecoded(*this, {record, length}, {"ENVIRONMP_Event", 99},
                          "Unhandled Event by ENVIRONMP");
}

ENVIRONMP_Event::~ENVIRONMP_Event() = default;

String get_ENVIRONMP_such_and_such_event_body(EmpEvLogMsg_s const*) {
  return mpuevent::sampleBody();
}

}  // namespace Pegasus
