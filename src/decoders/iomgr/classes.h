#ifndef DECODERS_IOMGR_CLASSES_H
#define DECODERS_IOMGR_CLASSES_H

#include "decoders/iomgr/EventClasses.h"

namespace mpuevent::iomgr {

/// The I/O manager's event classes; the first is class 1.
extern const EventClass iomgrClasses[32];

}  // namespace mpuevent::iomgr

#endif
