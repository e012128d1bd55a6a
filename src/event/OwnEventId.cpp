#include "event/OwnEventId.h"

#include <utility>

namespace mpuevent {

namespace {

/// Set from the call of a decoder's constructor to that of its base class. The public constructor
/// has no parameter for it.
constinit thread_local bool ownEventId = false;

}  // namespace

Pegasus::EmpEvLogMsg_s* withOwnEventId(Pegasus::EmpEvLogMsg_s* record) {
  ownEventId = true;
  return record;
}

bool takeOwnEventId() { return std::exchange(ownEventId, false); }

}  // namespace mpuevent
