#include "Utf8.h"

#include <Pegasus/Common/Exception.h>

#include <algorithm>
#include <cstring>
#include <string>

namespace Pegasus::utf8 {
namespace {

constexpr Uint32 lastCodePoint = 0x10FFFF;
constexpr Uint32 firstSupplementary = 0x10000;
constexpr Uint16 replacement = 0xFFFD;

constexpr bool isContinuation(Uint8 byte) { return (byte & 0xC0) == 0x80; }
constexpr bool isHighSurrogate(Uint32 unit) { return unit >= 0xD800 && unit <= 0xDBFF; }
constexpr bool isLowSurrogate(Uint32 unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }

/// Widens the leading ASCII bytes and returns how many there are.
std::size_t widenAscii(const Uint8* bytes, std::size_t count, Char16* units) {
  std::size_t at = 0;
  constexpr std::size_t step = 16;
  for (; count - at >= step; at += step) {
    Uint64 words[step / sizeof(Uint64)];
    std::memcpy(words, bytes + at, step);
    if (((words[0] | words[1]) & 0x8080808080808080U) != 0) break;
    // A copy that nothing else points to, and a fixed count: compilers make vector code of this.
    Uint8 chunk[step];
    std::memcpy(chunk, bytes + at, step);
    for (std::size_t i = 0; i < step; ++i) units[at + i] = Char16(chunk[i]);
  }
  for (; at < count && bytes[at] < 0x80; ++at) units[at] = Char16(bytes[at]);
  return at;
}

/// Narrows the leading ASCII units in whole steps and returns how many there are.
std::size_t narrowAscii(const Char16* units, std::size_t count, char* bytes) {
  std::size_t at = 0;
  constexpr std::size_t step = 16;
  for (; count - at >= step; at += step) {
    Uint16 all = 0;
    char chunk[step];
    for (std::size_t i = 0; i < step; ++i) {
      const Uint16 unit = units[at + i];
      all |= unit;
      chunk[i] = static_cast<char>(unit);
    }
    if (all >= 0x80) break;
    std::memcpy(bytes + at, chunk, step);
  }
  return at;
}

struct Sequence {
  Uint32 codePoint;
  Uint32 length;  // 0: the bytes are no UTF-8
};

/// The sequence of two or more bytes that `bytes` begins with.
Sequence readSequence(const Uint8* bytes, std::size_t count) {
  constexpr Sequence bad = {0, 0};
  const Uint8 lead = bytes[0];
  const Uint32 length = lead < 0xC2 ? 0 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : lead < 0xF5 ? 4 : 0;
  if (length == 0 || length > count) return bad;
  Uint32 codePoint = lead & (0x7FU >> length);
  for (Uint32 i = 1; i < length; ++i) {
    if (!isContinuation(bytes[i])) return bad;
    codePoint = (codePoint << 6) | (bytes[i] & 0x3FU);
  }
  const Uint32 least = length == 2 ? 0x80 : length == 3 ? 0x800 : firstSupplementary;
  if (codePoint < least || codePoint > lastCodePoint) return bad;
  return {codePoint, length};
}

[[noreturn]] void throwInvalid(const Uint8* bytes, std::size_t count, std::size_t at) {
  constexpr std::size_t maxClean = 40;
  constexpr std::size_t maxShown = 11;
  constexpr char digits[] = "0123456789ABCDEF";

  std::size_t clean = at - std::min(at, maxClean);
  while (clean < at && isContinuation(bytes[clean])) {
    ++clean;  // the message itself must be UTF-8
  }
  std::string message = "The byte sequence starting at index " + std::to_string(at) +
                        " is not valid UTF-8 encoding: ";
  message.append(bytes + clean, bytes + at);
  for (std::size_t i = at; i < at + std::min(count - at, maxShown); ++i) {
    message.append(" 0x").append(1, digits[bytes[i] >> 4]).append(1, digits[bytes[i] & 0xF]);
  }
  throw Exception(String(message.data(), static_cast<Uint32>(message.size())));
}

}  // namespace

Uint32 decode(const char* text, Uint32 count, Char16* units) {
  const auto* bytes = reinterpret_cast<const Uint8*>(text);
  Char16* next = units;
  std::size_t at = 0;
  for (;;) {
    const std::size_t ascii = widenAscii(bytes + at, count - at, next);
    at += ascii;
    next += ascii;
    if (at == count) return static_cast<Uint32>(next - units);
    const Sequence sequence = readSequence(bytes + at, count - at);
    if (sequence.length == 0) throwInvalid(bytes, count, at);
    at += sequence.length;

    const Uint32 codePoint = sequence.codePoint;
    if (codePoint >= firstSupplementary) {
      const Uint32 rest = codePoint - firstSupplementary;
      *next++ = static_cast<Uint16>(0xD800 + (rest >> 10));
      *next++ = static_cast<Uint16>(0xDC00 + (rest & 0x3FF));
    } else if (isHighSurrogate(codePoint) || isLowSurrogate(codePoint) || codePoint >= 0xFFFE) {
      *next++ = replacement;
    } else {
      *next++ = static_cast<Uint16>(codePoint);
    }
  }
}

std::size_t encode(const Char16* units, Uint32 count, char* bytes) {
  std::size_t at = narrowAscii(units, count, bytes);
  char* next = bytes + at;
  const auto put = [&next](Uint32 byte) { *next++ = static_cast<char>(byte); };
  const auto putContinuation = [&put](Uint32 bits) { put(0x80 | (bits & 0x3F)); };

  for (; at < count; ++at) {
    Uint32 codePoint = units[at];
    if (isHighSurrogate(codePoint)) {
      if (at + 1 == count) break;
      if (isLowSurrogate(units[at + 1])) {
        ++at;
        codePoint = firstSupplementary + ((codePoint & 0x3FF) << 10) + (units[at] & 0x3FFU);
      }
    }
    if (codePoint < 0x80) {
      put(codePoint);
    } else if (codePoint < 0x800) {
      put(0xC0 | codePoint >> 6);
      putContinuation(codePoint);
    } else if (codePoint < firstSupplementary) {
      put(0xE0 | codePoint >> 12);
      putContinuation(codePoint >> 6);
      putContinuation(codePoint);
    } else {
      put(0xF0 | codePoint >> 18);
      putContinuation(codePoint >> 12);
      putContinuation(codePoint >> 6);
      putContinuation(codePoint);
    }
  }
  return static_cast<std::size_t>(next - bytes);
}

}  // namespace Pegasus::utf8
