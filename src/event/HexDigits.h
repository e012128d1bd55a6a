#ifndef EVENT_HEXDIGITS_H
#define EVENT_HEXDIGITS_H

#include <array>
#include <cstddef>
#include <string_view>

namespace mpuevent {

inline constexpr std::string_view upperHexDigits = "0123456789ABCDEF";

/// The two upper-case digits of each byte.
inline constexpr auto hexPairs = [] {
  std::array<std::array<char, 2>, 256> pairs{};
  for (std::size_t i = 0; i < pairs.size(); ++i) {
    pairs[i] = {upperHexDigits[i >> 4], upperHexDigits[i & 0xF]};
  }
  return pairs;
}();

/// Writes a byte's two upper-case digits; returns where they end.
inline char* writeHexByte(char* to, unsigned char byte) {
  // NOLINTNEXTLINE(clang-analyzer-core.NullDereference): the caller has made room.
  *to++ = hexPairs[byte][0];
  *to++ = hexPairs[byte][1];
  return to;
}

}  // namespace mpuevent

#endif
