#ifndef EVENT_UTF8_H
#define EVENT_UTF8_H

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace mpuevent {

// One character of UTF-8, in and out. What stands in for OpenPegasus has code of its own: it is a
// library by itself, and treats what is no UTF-8 as OpenPegasus does.

/// Reads the character that starts at `at`, and moves that behind it; false if the bytes there are
/// not one character of UTF-8 in its shortest form.
inline bool readUtf8(std::string_view bytes, std::size_t& at, std::uint32_t& character) {
  const auto byteAt = [bytes](std::size_t i) -> std::uint32_t {
    return static_cast<unsigned char>(bytes[i]);
  };
  const std::uint32_t lead = byteAt(at);
  if (lead < 0x80) {
    character = lead;
    ++at;
    return true;
  }
  if (lead < 0xE0) {  // most of all: it has a path of its own
    if (lead < 0xC2 || bytes.size() - at < 2 || (byteAt(at + 1) & 0xC0) != 0x80) return false;
    character = (lead & 0x1F) << 6 | (byteAt(at + 1) & 0x3F);
    at += 2;
    return true;
  }
  const std::size_t length = lead < 0xF0 ? 3 : 4;
  if (lead > 0xF4 || length > bytes.size() - at) return false;
  character = lead & (0x7FU >> length);
  for (std::size_t i = 1; i < length; ++i) {
    const std::uint32_t next = byteAt(at + i);
    if ((next & 0xC0) != 0x80) return false;
    character = character << 6 | (next & 0x3F);
  }
  const bool shortest = character >= (length == 3 ? 0x800U : 0x10000U);
  const bool surrogate = character >= 0xD800 && character <= 0xDFFF;
  if (!shortest || surrogate || character > 0x10FFFF) return false;
  at += length;
  return true;
}

constexpr std::size_t longestUtf8 = 4;

/// Writes a character to `to`, which has room for `longestUtf8` bytes; returns their end.
inline char* writeUtf8(char* to, std::uint32_t character) {
  const auto tail = [character](int shift) {
    return static_cast<char>(0x80 | (character >> shift & 0x3F));
  };
  if (character < 0x80) {
    *to++ = static_cast<char>(character);
  } else if (character < 0x800) {
    *to++ = static_cast<char>(0xC0 | character >> 6);
    *to++ = tail(0);
  } else if (character < 0x10000) {
    *to++ = static_cast<char>(0xE0 | character >> 12);
    *to++ = tail(6);
    *to++ = tail(0);
  } else {
    *to++ = static_cast<char>(0xF0 | character >> 18);
    *to++ = tail(12);
    *to++ = tail(6);
    *to++ = tail(0);
  }
  return to;
}

}  // namespace mpuevent

#endif
