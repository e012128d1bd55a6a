#ifndef MPUEVENT_LOG_FRAMING_INTACTRECORDS_H
#define MPUEVENT_LOG_FRAMING_INTACTRECORDS_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

#include "log/input/InputWindow.h"

namespace mpuevent::log {

/// The end of the input, if the lengths of records lead from `offset` exactly there: then it holds
/// records and is intact, whatever their serials are. Nothing if most of the serials are text, but
/// the first header is none: such records are told by themselves, and better where a log begins
/// inside one. One pass over the headers.
std::optional<std::uint64_t> endOfIntactRecords(const ReadBytesAt& readAt, std::uint64_t offset);

/// Records of which all bytes are there, one after the other.
struct LikelyRecords {
  std::size_t count = 0;
  std::size_t length = 0;  ///< of all of them
};

/// The records that `bytes` begin with by their lengths, if nearly all of them have the codes and
/// the slot of a record: where no end can be seen that the lengths lead to. None if most of the
/// serials are text.
LikelyRecords likelyRecords(std::span<const unsigned char> bytes);

}  // namespace mpuevent::log

#endif
