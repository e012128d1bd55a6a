#ifndef MPUEVENT_EXPORT_H
#define MPUEVENT_EXPORT_H

/// Marks what libMPUEvent exports; everything else in the library is hidden.
#define MPUEVENT_API __attribute__((visibility("default")))

#endif
