#ifndef MPUEVENT_LOG_FOLLOWING_FILEPLACE_H
#define MPUEVENT_LOG_FOLLOWING_FILEPLACE_H

#include <cstdint>
#include <span>

namespace mpuevent::log {

/// A place in a file, known by the bytes before it, wherever the file was moved or copied to.
struct FilePlace {
  std::uint64_t offset = 0;
  std::uint64_t length = 0;  ///< of the bytes before it that are known, 64 KiB and a few at most
  std::uint64_t digest = 0;  ///< of these
};

/// Of nothing if it is left out: FNV-1a, to be continued.
std::uint64_t digestOf(std::span<const unsigned char> bytes,
                       std::uint64_t before = 0xCBF29CE484222325);

}  // namespace mpuevent::log

#endif
