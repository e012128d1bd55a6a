#ifndef MPUEVENT_TOOL_JSONTEXT_H
#define MPUEVENT_TOOL_JSONTEXT_H

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "Utf8.h"

namespace mpuevent::tool {

// Copying into JSON strings. Texts with nothing to escape are nearly all, and short: they are
// copied and looked at in chunks and blocks of fixed size, where a call of memcpy would cost more.

inline constexpr std::size_t kJsonBlock = Utf8Text::padding;
inline constexpr std::size_t kLongestJsonEscape = 6;  // "\\u001F"

/// Whether one of 8 bytes must be escaped: is a control character, a quote or a backslash.
constexpr bool anyToEscape(std::uint64_t bytes) {
  constexpr std::uint64_t each = 0x0101010101010101;
  // Sets the top bit of each byte below `bound`, and maybe of bytes above such a one.
  const auto below = [](std::uint64_t v, std::uint64_t bound) {
    return (v - each * bound) & ~v & each * 0x80;
  };
  return (below(bytes, 0x20) | below(bytes ^ each * '"', 1) | below(bytes ^ each * '\\', 1)) != 0;
}

template <typename Chunk>
Chunk loadChunk(const char* from) {
  Chunk chunk;
  std::memcpy(&chunk, from, sizeof chunk);
  return chunk;
}

template <typename Chunk>
void storeChunk(char* to, Chunk chunk) {
  std::memcpy(to, &chunk, sizeof chunk);
}

/// Copies kJsonBlock bytes; whether there is nothing to escape among them.
inline bool copyJsonBlock(char* to, const char* from) {
  std::array<unsigned char, kJsonBlock> block;
  std::memcpy(block.data(), from, kJsonBlock);
  // A loop of fixed length over bytes of its own becomes vector code.
  unsigned char found = 0;
  for (const unsigned char byte : block) {
    found = static_cast<unsigned char>(found | (byte < 0x20) | (byte == '"') | (byte == '\\'));
  }
  std::memcpy(to, block.data(), kJsonBlock);
  return found == 0;
}

/// Copies the text up to the first byte that must be escaped, or to a little before it; returns how
/// much.
inline std::size_t copyJsonPlain(char* to, std::string_view utf8) {
  using Chunk = std::uint64_t;
  using Half = std::uint32_t;
  const char* from = utf8.data();
  const std::size_t size = utf8.size();
  if (size >= sizeof(Chunk)) {
    std::size_t at = 0;
    while (size - at >= kJsonBlock && copyJsonBlock(to + at, from + at)) at += kJsonBlock;
    const std::size_t last = size - sizeof(Chunk);
    for (; at < last; at += sizeof(Chunk)) {
      const auto chunk = loadChunk<Chunk>(from + at);
      if (anyToEscape(chunk)) return at;
      storeChunk(to + at, chunk);
    }
    // The last chunk may overlap the one before.
    const auto chunk = loadChunk<Chunk>(from + last);
    storeChunk(to + last, chunk);
    return anyToEscape(chunk) ? at : size;
  }
  if (size >= sizeof(Half)) {
    const auto first = loadChunk<Half>(from);
    const auto last = loadChunk<Half>(from + size - sizeof(Half));
    storeChunk(to, first);
    storeChunk(to + size - sizeof(Half), last);
    return anyToEscape(Chunk{first} << 32 | last) ? 0 : size;
  }
  Chunk seen = 0x2020202020202020;
  for (std::size_t at = 0; at < size; ++at) {
    to[at] = from[at];
    seen = seen << 8 | static_cast<unsigned char>(from[at]);
  }
  return anyToEscape(seen) ? 0 : size;
}

/// Copies with escapes, at most kLongestJsonEscape bytes for each; returns the end.
inline char* copyJsonEscaped(char* to, std::string_view utf8) {
  constexpr std::string_view hexDigits = "0123456789ABCDEF";
  for (const char c : utf8) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte < 0x20) {
      to = std::copy_n("\\u00", 4, to);
      *to++ = hexDigits[byte >> 4];
      *to++ = hexDigits[byte & 0xF];
    } else {
      if (c == '"' || c == '\\') *to++ = '\\';
      *to++ = c;
    }
  }
  return to;
}

/// Copies a text that has the padding of Utf8Text behind it, to where there is as much more room.
/// Returns whether all was copied; what is to be escaped behind a text may hold it up, too.
inline bool copyJsonPadded(char* to, std::string_view utf8) {
  return utf8.size() <= kJsonBlock ? copyJsonBlock(to, utf8.data())
                                   : copyJsonPlain(to, utf8) == utf8.size();
}

}  // namespace mpuevent::tool

#endif
