#ifndef MPUEVENT_VERSION_H
#define MPUEVENT_VERSION_H

#include <MPUEvent/Export.h>

// The version of these headers. It stands here alone: the build, the packages and the tool read it.
#define MPUEVENT_VERSION_MAJOR 0
#define MPUEVENT_VERSION_MINOR 2
#define MPUEVENT_VERSION_PATCH 0

/// One number to compare in `#if`: 200 is 0.2.0, 10203 is 1.2.3.
#define MPUEVENT_VERSION_NUMBER \
  (MPUEVENT_VERSION_MAJOR * 10000 + MPUEVENT_VERSION_MINOR * 100 + MPUEVENT_VERSION_PATCH)

#define MPUEVENT_VERSION_TEXT_(major, minor, patch) #major "." #minor "." #patch
#define MPUEVENT_VERSION_TEXT(major, minor, patch) MPUEVENT_VERSION_TEXT_(major, minor, patch)
/// The same as text: "0.2.0".
#define MPUEVENT_VERSION \
  MPUEVENT_VERSION_TEXT(MPUEVENT_VERSION_MAJOR, MPUEVENT_VERSION_MINOR, MPUEVENT_VERSION_PATCH)

/// The version of the library that the program runs with, as `MPUEVENT_VERSION` is the one that it
/// was compiled for. Never null, lasts as long as the library is loaded, and may be asked for on
/// any thread. With C linkage, so that `dlsym` finds it.
extern "C" MPUEVENT_API const char* mpuevent_version();

#endif
