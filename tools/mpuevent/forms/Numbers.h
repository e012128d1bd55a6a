#ifndef MPUEVENT_TOOL_NUMBERS_H
#define MPUEVENT_TOOL_NUMBERS_H

#include <array>
#include <cstdint>
#include <cstring>
#include <span>

#include "TextBuffer.h"
#include "event/HexDigits.h"
#include "event/Numbers.h"

namespace mpuevent::tool {

/// The room that writeDecimal() needs.
inline constexpr std::size_t kDecimalRoom = 24;

/// The digits of a number below 1000, in room of a fixed size.
struct Digits {
  std::array<char, 4> alone;   ///< as it is written by itself
  std::array<char, 3> behind;  ///< all three, as they are written behind others
  unsigned char count;         ///< of those alone
};

inline constexpr unsigned kGroup = 1000;
extern const std::array<Digits, kGroup> kDigits;

char* writeLongDecimal(char* to, std::uint64_t number);

/// Writes the number in decimal to where there is kDecimalRoom; returns the end.
inline char* writeDecimal(char* to, std::uint64_t number) {
  if (number >= kGroup) return writeLongDecimal(to, number);
  const Digits& digits = kDigits[static_cast<std::size_t>(number)];
  std::memcpy(to, digits.alone.data(), digits.alone.size());
  return to + digits.count;
}

template <typename Text>
void appendDecimal(Text& to, std::uint64_t number) {
  to.advanceTo(writeDecimal(to.reserve(kDecimalRoom), number));
}

/// The room that writeHex() needs.
inline constexpr std::size_t kHexRoom = 24;

/// "0x1a2b"
inline char* writeHex(char* to, std::uint64_t number) {
  return putHexDigits(putLiteral(to, "0x"), number, 1, Letters::small);
}

template <typename Text>
void appendHex(Text& to, std::uint64_t number) {
  to.advanceTo(writeHex(to.reserve(kHexRoom), number));
}

/// Two upper-case digits for each byte, nothing between them.
template <typename Text>
void appendHexBytes(Text& to, std::span<const unsigned char> bytes) {
  char* place = to.reserve(2 * bytes.size());
  for (const unsigned char byte : bytes) place = writeHexByte(place, byte);
  to.advanceTo(place);
}

}  // namespace mpuevent::tool

#endif
