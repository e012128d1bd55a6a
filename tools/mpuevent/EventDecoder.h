#ifndef MPUEVENT_TOOL_EVENTDECODER_H
#define MPUEVENT_TOOL_EVENTDECODER_H

#include <MPUEvent/Quarn_Event.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>

#include "log/framing/LogReader.h"

namespace mpuevent::tool {

/// Decodes records as an agent would that received them in messages.
class EventDecoder {
 public:
  /// The longest record that an envelope reads: one byte below the wrap of its 16-bit length.
  static constexpr std::size_t longestRecord = 0xFFFF;

  /// Of a longer record the first `longestRecord` bytes are decoded.
  std::unique_ptr<Pegasus::Quarn_Event> decode(const log::LogUnit& unit);

  /// The class of the event without its namespace. Valid for good.
  static std::string_view className(const Pegasus::Quarn_Event& event);
};

}  // namespace mpuevent::tool

#endif
