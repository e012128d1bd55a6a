#include <MPUEvent/MPUEvent.h>

#include "event/RecordView.h"
#include "modules/Headers.h"

namespace Pegasus {

Quarn_Event* MPUEvent::create_Quarn_Event() const {
  if (record_ == nullptr || recordLength_ < mpuevent::Record::headerSize) return nullptr;
  const auto length = static_cast<int>(recordLength_);
  switch (mpuevent::Record(record_, length).source()) {
#define MODULE(source, word, name) \
  case source:                     \
    return new name##_Event(record_, length);
#include "modules/Modules.def"
    default:
      return new Quarn_Event(record_, recordLength_);
  }
}

}  // namespace Pegasus
