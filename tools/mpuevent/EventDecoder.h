#ifndef MPUEVENT_TOOL_EVENTDECODER_H
#define MPUEVENT_TOOL_EVENTDECODER_H

#include <CMAP/CMAPMessageHeader.h>
#include <MPUEvent/MPUEvent.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string_view>

#include "log/framing/LogUnit.h"

namespace mpuevent::tool {

/// Decodes records as an agent would that received them in messages. From any thread.
class EventDecoder {
 public:
  /// The bytes of a CMAP message header.
  using MessageHeader = std::array<unsigned char, Pegasus::CMAPMessageHeader::wireSize>;

  /// The longest record that an envelope reads: one byte below the wrap of its 16-bit length.
  static constexpr std::size_t longestRecord = 0xFFFF;

  /// What an envelope would make of the unit's record, without a copy of it. Of a longer one the
  /// first `longestRecord` bytes are decoded. Null if it is shorter than a record's header.
  static std::unique_ptr<Pegasus::Quarn_Event> decode(const log::LogUnit& unit);
  /// By way of an envelope. The header says how many bytes of the record are read. Null if that is
  /// less than a record has; throws `CMAPOperationFailedException` if it is more than there are.
  static std::unique_ptr<Pegasus::Quarn_Event> decode(const MessageHeader& header,
                                                      std::span<const unsigned char> record);

  /// The header that the record came with, or zeros, but with the record's true length.
  static MessageHeader messageHeader(const log::LogUnit& unit);

  /// The class of a source's events without its namespace. Valid for good.
  static std::string_view className(std::uint8_t source);
};

}  // namespace mpuevent::tool

#endif
