#ifndef DECODERS_CACHE_LAYOUTS_H
#define DECODERS_CACHE_LAYOUTS_H

#include <cstdint>

#include "event/Fields.h"

/// What the cache managers log with a bugcheck. All offsets are from the payload's start.
namespace mpuevent::cache {

/// What an event shows.
enum class Shown : std::uint8_t {
  nothing,
  // A structure or a few words.
  arcTables,
  btreeNodes,
  disklineMode,
  dumpCacheVt,
  dumpClh,
  dumpClhCounts,
  dumpClhVt,
  dumpIsurp,
  dumpMmsg,
  dumpSemaphore,
  extraIsurpCount,
  pirData,
  qmirData,
  queuePopStatus,
  structureHead,
  volumeNumber,
  // From here on a structure and what was logged behind it. Those named "...And..." show the latter
  // first.
  dumpIsurpListheads,
  dumpIsurpClh,
  dumpIsurpClhReconfig,
  dumpClhOverwrite,
  dumpClhListheads,
  volumeAndMmsg,
  volumeAndIsurp,
  remainingAndIsurp,
  currentAndIsurp,
  largestAndIsurp,
  indexAndClh,
};

/// Up to two tables of elements, one after the other.
struct Elements {
  Fields first = {};
  Fields second = {};
};

Elements elementsOf(Shown shown);

}  // namespace mpuevent::cache

#endif
