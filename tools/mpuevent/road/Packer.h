#ifndef MPUEVENT_TOOL_ROAD_PACKER_H
#define MPUEVENT_TOOL_ROAD_PACKER_H

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "road/Frame.h"
#include "road/Road.h"

namespace mpuevent::tool {

/// Puts records into parcels: of one log each, up to the next sequence id that 64 divides. So two
/// pulls of a log that overlap make the same parcels of what is in both, and the road sees that it
/// has them.
class Packer {
 public:
  /// Given a parcel and the place of its first record.
  using Give = std::function<void(Parcel parcel, std::uint64_t first)>;

  explicit Packer(Give give) : give_(std::move(give)) {}

  /// The record has 152 bytes or more; places rise.
  void add(std::span<const unsigned char> record, std::uint64_t place);
  /// Gives all that is held.
  void flush();
  /// The place of the first record that is held, if any is.
  std::optional<std::uint64_t> oldest() const;

 private:
  static constexpr std::size_t mostOpen = 64;

  /// A parcel being filled.
  struct Open {
    std::string log;   // serials as they stand in the record, and instance
    std::string name;  // with which the id begins
    unsigned shard = 0;
    std::uint32_t block = 0;
    std::uint32_t firstId = 0;
    std::uint32_t lastId = 0;
    std::uint64_t firstPlace = 0;
    FrameWriter frame;
  };

  Open& openFor(std::string_view log);
  std::size_t oldestOpen() const;
  void give(Open& open);

  Give give_;
  std::vector<Open> open_;
  std::size_t last_ = 0;  // the one used last, most often used again
};

}  // namespace mpuevent::tool

#endif
