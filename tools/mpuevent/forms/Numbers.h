#ifndef MPUEVENT_TOOL_NUMBERS_H
#define MPUEVENT_TOOL_NUMBERS_H

#include <charconv>
#include <cstdint>
#include <span>

#include "TextBuffer.h"
#include "event/HexDigits.h"

namespace mpuevent::tool {

inline void appendNumber(TextBuffer& to, std::uint64_t number, int base) {
  constexpr std::size_t mostDigits = 20;
  char* const digits = to.reserve(mostDigits);
  to.advanceTo(std::to_chars(digits, digits + mostDigits, number, base).ptr);
}

inline void appendDecimal(TextBuffer& to, std::uint64_t number) { appendNumber(to, number, 10); }

/// "0x1a2b"
inline void appendHex(TextBuffer& to, std::uint64_t number) {
  to += "0x";
  appendNumber(to, number, 16);
}

/// Two upper-case digits for each byte, nothing between them.
inline void appendHexBytes(TextBuffer& to, std::span<const unsigned char> bytes) {
  char* place = to.reserve(2 * bytes.size());
  for (const unsigned char byte : bytes) place = writeHexByte(place, byte);
  to.advanceTo(place);
}

}  // namespace mpuevent::tool

#endif
