#ifndef DECODERS_CACHE_LAYOUTS_H
#define DECODERS_CACHE_LAYOUTS_H

#include <span>

#include "event/Fields.h"

/// What the cache managers log with a bugcheck. All offsets are from the payload's start.
namespace mpuevent::cache {

/// What an event shows: up to two tables of elements, one after the other.
struct Elements {
  std::span<const Field> first = {};
  std::span<const Field> second = {};
};

extern const Elements nothing;

// A structure or a few words.
extern const Elements arcTables;
extern const Elements btreeNodes;
extern const Elements disklineMode;
extern const Elements dumpCacheVt;
extern const Elements dumpClh;
extern const Elements dumpClhCounts;
extern const Elements dumpClhVt;
extern const Elements dumpIsurp;
extern const Elements dumpMmsg;
extern const Elements dumpSemaphore;
extern const Elements extraIsurpCount;
extern const Elements pirData;
extern const Elements qmirData;
extern const Elements queuePopStatus;
extern const Elements structureHead;
extern const Elements volumeNumber;

// A structure and what was logged behind it. Those named "...And..." show the latter first.
extern const Elements dumpIsurpListheads;
extern const Elements dumpIsurpClh;
extern const Elements dumpIsurpClhReconfig;
extern const Elements dumpClhOverwrite;
extern const Elements dumpClhListheads;
extern const Elements volumeAndMmsg;
extern const Elements volumeAndIsurp;
extern const Elements remainingAndIsurp;
extern const Elements currentAndIsurp;
extern const Elements largestAndIsurp;
extern const Elements indexAndClh;

}  // namespace mpuevent::cache

#endif
