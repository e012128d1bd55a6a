#ifndef MPUEVENT_TOOL_ROAD_FRAME_H
#define MPUEVENT_TOOL_ROAD_FRAME_H

#include <cstddef>
#include <span>
#include <string>
#include <vector>

namespace mpuevent::tool {

/// Makes messages of records, the same bytes of the same records:
///
///     4 bytes   "MPUR"
///     2         version of this layout, 1
///     2         number of records
///     4, then   length of a record and its bytes, as often as there are records
///     16        hashOf() all bytes before
///
/// Numbers are big-endian.
class FrameWriter {
 public:
  /// Records in a message, and bytes: servers take a megabyte.
  static constexpr std::size_t mostRecords = 64;
  static constexpr std::size_t mostBytes = std::size_t{256} << 10;

  FrameWriter();

  /// Whether the record can be in this message as well; in an empty one it can.
  bool hasRoomFor(std::size_t recordSize) const;
  void add(std::span<const unsigned char> record);
  bool empty() const { return records_ == 0; }
  std::size_t records() const { return records_; }

  /// The message; the next one is begun.
  std::string finish();

 private:
  void begin();

  std::string bytes_;
  std::size_t records_ = 0;
};

/// What is in a message that may hold any bytes.
struct FrameContent {
  std::vector<std::span<const unsigned char>> records;  ///< in the message's bytes
  std::string problem;  ///< why they cannot be taken for records; empty: they can
};

FrameContent readFrame(std::span<const unsigned char> message);

}  // namespace mpuevent::tool

#endif
