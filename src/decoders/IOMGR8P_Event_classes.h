#ifndef DECODERS_IOMGR8P_EVENT_CLASSES_H
#define DECODERS_IOMGR8P_EVENT_CLASSES_H

#include "decoders/EventClasses.h"

namespace mpuevent {

/// The I/O manager's event classes; the first is class 1.
extern const EventClass iomgrClasses[32];

}  // namespace mpuevent

#endif
