#ifndef MPUEVENT_LOG_FRAMING_INTACTRECORDS_H
#define MPUEVENT_LOG_FRAMING_INTACTRECORDS_H

#include <cstdint>
#include <optional>

#include "log/input/InputWindow.h"

namespace mpuevent::log {

/// The end of the input, if the lengths of records lead from `offset` exactly there: then it holds
/// records and is intact, whatever their serials are. Nothing if most of the serials are text:
/// such records are told by themselves, and better where a log begins inside one. One pass over the
/// headers.
std::optional<std::uint64_t> endOfIntactRecords(const ReadBytesAt& readAt, std::uint64_t offset);

}  // namespace mpuevent::log

#endif
