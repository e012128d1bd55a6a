#ifndef MPUEVENT_TOOL_STORE_RECORDKEY_H
#define MPUEVENT_TOOL_STORE_RECORDKEY_H

#include <array>
#include <compare>
#include <cstdint>
#include <span>
#include <string>

namespace mpuevent::tool {

/// Of a record's bytes: XXH3, 128 bits, the high byte first. The same on every machine. Bytes that
/// differ have different ones but for a chance that is none; it is no proof against a forger.
using RecordHash = std::array<unsigned char, 16>;

RecordHash hashOf(std::span<const unsigned char> record);

/// What tells a record from every other: in which log it was written, its number there, and, as a
/// number may be used again, its bytes.
struct RecordKey {
  std::string enclosureSerial;  ///< UTF-8, as in JSON
  std::string controllerSerial;
  std::uint32_t logInstance = 0;
  std::uint32_t sequenceId = 0;
  std::uint32_t timestamp = 0;
  RecordHash hash{};

  auto operator<=>(const RecordKey&) const = default;
};

/// Of any bytes: texts and numbers that are not there are empty and 0.
RecordKey keyOf(std::span<const unsigned char> record);

}  // namespace mpuevent::tool

#endif
