#ifndef MPUEVENT_LOG_RECOGNITION_COMPRESSION_H
#define MPUEVENT_LOG_RECOGNITION_COMPRESSION_H

#include <cstddef>
#include <string>
#include <string_view>

namespace mpuevent::log {

/// A way in which files are packed, and the command that unpacks one to its standard output.
struct Compression {
  std::string_view magic;
  std::string_view name;
  std::string_view command;
};

/// How many bytes compressionOf() needs.
constexpr std::size_t compressionMagicSize = 6;

/// What a file that begins so is packed with; null if with nothing known.
const Compression* compressionOf(std::string_view beginning);

/// Says so, and how to decode such a file; without a name, such an input.
std::string describe(const Compression& compression, std::string_view file);

}  // namespace mpuevent::log

#endif
