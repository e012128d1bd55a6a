#include <MPUEvent/SNMPMP_Event.h>

#include "event/Undecoded.h"

namespace Pegasus {

SNMPMP_Event::SNMPMP_Event(EmpEvLogMsg_s* record, int length)
    : Quarn_Event(record, static_cast<unsigned int>(length)) {
  if (record == nullptr) return;
  mpuevent::showUndecoded(*this, {record, length}, {"SNMPMP_Event", 99},
                          "Unhandled Event by SNMPMP");
}

SNMPMP_Event::~SNMPMP_Event() = default;

String get_SNMPMP_such_and_such_event_body(EmpEvLogMsg_s const*) { return mpuevent::sampleBody(); }

}  // namespace Pegasus
