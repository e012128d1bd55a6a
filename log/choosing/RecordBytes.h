#ifndef MPUEVENT_LOG_CHOOSING_RECORDBYTES_H
#define MPUEVENT_LOG_CHOOSING_RECORDBYTES_H

#include <span>

#include "event/RecordView.h"

namespace mpuevent::log {

/// The bytes of a unit's record, 152 or more, as a record.
inline Record recordOf(std::span<const unsigned char> bytes) {
  return {reinterpret_cast<const Pegasus::EmpEvLogMsg_s*>(bytes.data()),
          static_cast<int>(bytes.size())};
}

/// The same, of which nothing but the header is looked at.
inline Record headerOf(std::span<const unsigned char> bytes) {
  return {reinterpret_cast<const Pegasus::EmpEvLogMsg_s*>(bytes.data()), 0};
}

}  // namespace mpuevent::log

#endif
