#ifndef DECODERS_CONFIGURATION_H
#define DECODERS_CONFIGURATION_H

#include <cstddef>
#include <cstdint>

#include "event/BodyWriter.h"
#include "event/Fields.h"
#include "event/RecordView.h"

/// What the records of the two configuration processes, SCC and NCS, have alike.
namespace mpuevent::configuration {

inline constexpr Field responseRows[] = {
    {"Thread_Index",         0,  Width::u32, Format::dec      },
    {"Dest_Endpoint",        4,  Width::u32, Format::dec      },
    {"Request_Handle",       8,  Width::u32, Format::dec      },
    {"Timeout_seconds",      12, Width::u32, Format::dec      },
    {"Timeout_microseconds", 16, Width::u32, Format::dec      },
    {"pSema",                20, Width::u32, Format::hexUpper8},
    {"pMmsgLh",              24, Width::u32, Format::hexUpper8},
    {"pTimedout",            28, Width::u32, Format::hexUpper8},
};

/// A response event of the event engine. A text follows it.
inline constexpr Layout response = {32, packed<responseRows>};

/// Writes `count` bytes from `start` on, as far as they are held, as the group `Hex` and a line
/// feed. The lengths that records tell may leave less than nothing: a count below 0 is that of no
/// bytes.
void writeDump(BodyWriter& body, RecordView data, std::size_t start, std::int64_t count);

}  // namespace mpuevent::configuration

#endif
