#include <MPUEvent/MPUEvent.h>

#include "modules/newEvent.h"

namespace Pegasus {

Quarn_Event* MPUEvent::create_Quarn_Event() const {
  if (record_ == nullptr || recordLength_ < mpuevent::Record::headerSize) return nullptr;
  return mpuevent::newEvent(record_, static_cast<int>(recordLength_));
}

}  // namespace Pegasus
