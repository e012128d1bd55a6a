#ifndef MODULES_NEWEVENT_H
#define MODULES_NEWEVENT_H

#include "event/RecordView.h"
#include "modules/Headers.h"

namespace mpuevent {

/// Decodes a record of which `length` bytes are held, 152 or more, with the class of its source; a
/// source without one gives a plain `Quarn_Event`. The caller owns the event, which keeps nothing
/// of the record.
inline Pegasus::Quarn_Event* newEvent(Pegasus::EmpEvLogMsg_s* record, int length) {
  using namespace Pegasus;
  switch (Record(record, length).source()) {
#define MODULE(source, word, name) \
  case source:                     \
    return new name##_Event(record, length);
#include "modules/Modules.def"
    default:
      return new Quarn_Event(record, static_cast<unsigned int>(length));
  }
}

}  // namespace mpuevent

#endif
