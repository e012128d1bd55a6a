#include <MPUEvent/ICHAR_Event.h>

#include "event/Undecoded.h"

namespace Pegasus {

ICHAR_Event::ICHAR_Event(EmpEvLogMsg_s* record, int length)
    : Quarn_Event(record, static_cast<unsigned int>(length)) {
  if (record == nullptr) return;
  mpuevent::showUndecoded(*this, {record, length}, {"ICHAR_Event", 96}, "Unhandled Event by ICHAR");
}

ICHAR_Event::~ICHAR_Event() = default;

String get_ICHAR_such_and_such_event_body(EmpEvLogMsg_s const*) { return mpuevent::sampleBody(); }

}  // namespace Pegasus
