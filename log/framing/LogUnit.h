#ifndef MPUEVENT_LOG_FRAMING_LOGUNIT_H
#define MPUEVENT_LOG_FRAMING_LOGUNIT_H

#include <cstddef>
#include <cstdint>
#include <span>

namespace mpuevent::log {

/// The CMAP header before a message's record, and where in it the message's total length stands.
constexpr std::size_t messageHeaderSize = 64;
constexpr std::size_t totalLengthAt = 10;

/// How a log file is laid out.
enum class LogForm {
  automatic,  ///< either of the two below, or one after the other
  messages,   ///< back to back: a CMAP header and the record that it carries
  records,    ///< back to back: raw records, each of 152 + `evStructLength` bytes
};

/// One record of a log. The bytes are the reader's and valid until it is asked for the next one.
struct LogUnit {
  std::uint64_t offset = 0;  ///< of the message or record in the input
  const unsigned char* header =
      nullptr;  ///< the 64 bytes before the record; null if there are none
  std::span<const unsigned char> record;  ///< 152 bytes or more
};

}  // namespace mpuevent::log

#endif
