#ifndef EVENT_EXPORTEDBODY_H
#define EVENT_EXPORTEDBODY_H

#include <Pegasus/Common/String.h>

#include "event/RecordView.h"

namespace mpuevent {

/// What an exported body function does: the body of a record that is trusted to be as long as it
/// says, and an empty one for a null record. `write` makes a body of a `const Record&`.
template <class Write>
Pegasus::String exportedBody(const Pegasus::EmpEvLogMsg_s* record, Write write) {
  return record == nullptr ? Pegasus::String() : write(Record::trusting(record));
}

}  // namespace mpuevent

#endif
