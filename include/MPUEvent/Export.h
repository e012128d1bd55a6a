#ifndef MPUEVENT_EXPORT_H
#define MPUEVENT_EXPORT_H

#include <Pegasus/Common/Config.h>

// The headers use the attributes of g++ and clang++, which those take in every standard.

/// Marks what libMPUEvent exports; everything else in the library is hidden.
#define MPUEVENT_API __attribute__((visibility("default")))

/// The result belongs to the caller: compilers warn if it is not used.
#define MPUEVENT_NODISCARD __attribute__((warn_unused_result))

/// Marks what makes an event. Its texts are read through virtual functions, which the linker does
/// not see: a program compiled for the stand-in of OpenPegasus and a library built with the real
/// one, or the other way round, would else link and then crash.
#ifdef PEGASUS_STANDIN_ABI
#define MPUEVENT_PEGASUS_ABI PEGASUS_STANDIN_ABI
#else
#define MPUEVENT_PEGASUS_ABI
#endif

#endif
