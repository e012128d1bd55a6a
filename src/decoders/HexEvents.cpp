// The modules of which no layout is known, and the sample functions that they and three modules
// without a decoder class export.
#include <MPUEvent/ES_ADAPTERMP.h>
#include <MPUEvent/EVENTLOGMP.h>
#include <MPUEvent/PIEMAN8P.h>

#include "event/Undecoded.h"
#include "modules/Headers.h"

namespace Pegasus {

namespace {

constexpr char sampleBody[] = "Sample Body text";

}  // namespace

#define HEX(source, word, name, line)                                        \
  name##_Event::name##_Event(EmpEvLogMsg_s* record, int length)              \
      : Quarn_Event(record, static_cast<unsigned int>(length)) {             \
    if (record == nullptr) return;                                           \
    mpuevent::showUndecoded(*this, {record, length}, {#name "_Event", line}, \
                            "Unhandled Event by " #name);                    \
  }                                                                          \
  name##_Event::~name##_Event() = default;                                   \
  String get_##name##_such_and_such_event_body(EmpEvLogMsg_s const*) { return sampleBody; }
#include "modules/Modules.def"

String get_ES_ADAPTERMP_such_and_such_event_body(EmpEvLogMsg_s const*) { return sampleBody; }
String get_EVENTLOGMP_such_and_such_event_body(EmpEvLogMsg_s const*) { return sampleBody; }
String get_PIEMAN8P_such_and_such_event_body(EmpEvLogMsg_s const*) { return sampleBody; }

}  // namespace Pegasus
