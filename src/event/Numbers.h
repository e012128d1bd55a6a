#ifndef EVENT_NUMBERS_H
#define EVENT_NUMBERS_H

#include <algorithm>
#include <bit>
#include <cassert>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "event/HexDigits.h"

namespace mpuevent {

/// The text of a number; the printf formats are those that it reads like.
enum class Format : std::uint8_t {
  dec,           ///< "%d": the value as a signed 32-bit number
  udec,          ///< "%u", and "%llu" of a 64-bit value
  hexLower,      ///< "0x%x"
  hexUpper8,     ///< "0x%08X" of a word; words of one value are joined with ":"
  hexLower8,     ///< "0x%08x"; words of one value are joined with two blanks
  hexUpper2,     ///< "0x%02X"
  hexLower6,     ///< "0x%06x"
  hexLower4,     ///< "0x%04x"
  hexLower2,     ///< "0x%02x"
  bareHexLower,  ///< "%x"
  markedHex2,    ///< "%02X (hex)"
  markedHex8,    ///< "%08X (hex)"
  markedHex16,   ///< "%016X (hex)"
  markedPair,    ///< "(%08X, %08X) (hex)" of the halves of a 64-bit value
  trueFalse,     ///< "TRUE" if it is not 0, else "FALSE"
  yesNo,         ///< "Yes" if it is not 0, else "No"
  pointer,       ///< "%p": "0x%x", and "(nil)" for 0
  pointer0x,     ///< "0x%p": two prefixes, and "0x(nil)" for 0
  seconds,       ///< "%d seconds"
};

// The functions below write to a place with room for the longest text, and return where theirs
// ends. What is behind that, up to that room and some bytes more, they may overwrite: so they have
// few branches.

constexpr std::size_t longestNumber = 26;

/// A text whose length the compiler knows.
template <std::size_t size>
char* putLiteral(char* place, const char (&text)[size]) {
  std::memcpy(place, text, size - 1);
  return place + size - 1;
}

/// What is added to a digit above 9 to make a letter of it.
enum class Letters : std::uint8_t { capital = 'A' - ('9' + 1), small = 'a' - ('9' + 1) };

/// The eight hex digits of a word, the first one in the highest byte.
inline std::uint64_t hexDigitsOf(std::uint32_t word, Letters letters) {
  std::uint64_t digits = word;
  digits = (digits << 16 | digits) & 0x0000FFFF0000FFFF;
  digits = (digits << 8 | digits) & 0x00FF00FF00FF00FF;
  digits = (digits << 4 | digits) & 0x0F0F0F0F0F0F0F0F;
  const std::uint64_t areLetters = (digits + 0x0606060606060606) >> 4 & 0x0101010101010101;
  return digits + 0x3030303030303030 + areLetters * static_cast<std::uint8_t>(letters);
}

/// The lowest `count` of eight digits of which the first stands in the highest byte.
inline char* putDigits(char* place, std::uint64_t digits, unsigned count) {
  assert(count >= 1 && count <= 8);
  digits <<= 8 * (8 - count);
  if constexpr (std::endian::native == std::endian::little) digits = __builtin_bswap64(digits);
  std::memcpy(place, &digits, sizeof digits);
  return place + count;
}

/// The lowest `count` digits, at least one and at most eight.
inline char* putHexWord(char* place, std::uint32_t word, unsigned count, Letters letters) {
  return putDigits(place, hexDigitsOf(word, letters), count);
}

/// All eight digits, with fewer instructions.
inline char* putEightHexDigits(char* place, std::uint32_t word, Letters letters) {
  // Sets the bit by which small letters differ from capitals, and which all digits have.
  const std::uint16_t smallLetters = letters == Letters::small ? 0x2020 : 0;
  for (const unsigned shift : {24U, 16U, 8U, 0U}) {
    std::uint16_t pair;
    std::memcpy(&pair, hexPairs[word >> shift & 0xFF].data(), sizeof pair);
    pair |= smallLetters;
    std::memcpy(place, &pair, sizeof pair);
    place += sizeof pair;
  }
  return place;
}

/// At least `digits`, of which there are 1 to 16.
inline char* putHexDigits(char* place, std::uint64_t value, unsigned digits, Letters letters) {
  unsigned count = std::max(digits, (static_cast<unsigned>(std::bit_width(value)) + 3) / 4);
  if (count > 8) {
    place = putHexWord(place, static_cast<std::uint32_t>(value >> 32), count - 8, letters);
    count = 8;
  }
  return putHexWord(place, static_cast<std::uint32_t>(value), count, letters);
}

/// A format that is hex digits and no more than a prefix or a mark.
struct HexForm {
  std::uint8_t prefixSize;
  std::uint8_t digits;  ///< at least so many; 0 of other formats
  Letters letters;
  std::uint8_t markSize;
};

inline constexpr HexForm hexForms[] = {
    {0, 0,  Letters::capital, 0}, // dec
    {0, 0,  Letters::capital, 0}, // udec
    {2, 1,  Letters::small,   0}, // hexLower
    {2, 8,  Letters::capital, 0}, // hexUpper8
    {2, 8,  Letters::small,   0}, // hexLower8
    {2, 2,  Letters::capital, 0}, // hexUpper2
    {2, 6,  Letters::small,   0}, // hexLower6
    {2, 4,  Letters::small,   0}, // hexLower4
    {2, 2,  Letters::small,   0}, // hexLower2
    {0, 1,  Letters::small,   0}, // bareHexLower
    {0, 2,  Letters::capital, 6}, // markedHex2
    {0, 8,  Letters::capital, 6}, // markedHex8
    {0, 16, Letters::capital, 6}, // markedHex16
    {0, 0,  Letters::capital, 0}, // markedPair
    {0, 0,  Letters::capital, 0}, // trueFalse
    {0, 0,  Letters::capital, 0}, // yesNo
    {0, 0,  Letters::capital, 0}, // pointer
    {0, 0,  Letters::capital, 0}, // pointer0x
    {0, 0,  Letters::capital, 0}, // seconds
};

inline char* putHexNumber(char* place, const HexForm& form, std::uint64_t value) {
  putLiteral(place, "0x");
  place += form.prefixSize;
  const auto word = static_cast<std::uint32_t>(value);
  place = form.digits == 8 && word == value ? putEightHexDigits(place, word, form.letters)
                                            : putHexDigits(place, value, form.digits, form.letters);
  if (form.markSize != 0) putLiteral(place, " (hex)");
  return place + form.markSize;
}

/// The eight decimal digits of a number that has no more, the first one in the highest byte.
inline std::uint64_t decimalDigitsOf(std::uint32_t value) {
  // Halves, quarters, digits: each step divides all the parts there are by 100 or 10, exactly, with
  // a multiplication that does not reach the next part.
  const std::uint64_t halves = std::uint64_t{value / 10000} << 32 | value % 10000;
  const std::uint64_t hundreds = halves * 10486 >> 20 & 0x0000007F0000007F;
  const std::uint64_t quarters = hundreds << 16 | (halves - hundreds * 100);
  const std::uint64_t tens = quarters * 103 >> 10 & 0x000F000F000F000F;
  return tens << 8 | (quarters - tens * 10);
}

/// Of a number below 100.
inline char* putOneOrTwoDigits(char* place, std::uint32_t value) {
  const std::uint32_t tens = value * 103 >> 10;
  const std::uint32_t ones = value - tens * 10;
  place[0] = static_cast<char>('0' + (tens != 0 ? tens : ones));
  place[1] = static_cast<char>('0' + ones);
  return place + (tens != 0 ? 2 : 1);
}

inline char* putDecimal(char* place, std::uint32_t value) {
  constexpr std::uint32_t eightDigits = 100'000'000;  // the first number with more
  constexpr std::uint64_t zeroDigits = 0x3030303030303030;
  if (value < 100) return putOneOrTwoDigits(place, value);
  if (value < eightDigits) {
    const std::uint64_t digits = decimalDigitsOf(value);
    const auto count = (static_cast<unsigned>(std::bit_width(digits)) + 7) / 8;
    return putDigits(place, digits | zeroDigits, count);
  }
  place = putOneOrTwoDigits(place, value / eightDigits);
  return putDigits(place, decimalDigitsOf(value % eightDigits) | zeroDigits, 8);
}

inline char* putDecimal(char* place, std::int32_t value) {
  const auto bits = static_cast<std::uint32_t>(value);
  if (value >= 0) return putDecimal(place, bits);
  *place = '-';
  return putDecimal(place + 1, -bits);
}

char* putLongDecimal(char* place, std::uint64_t value);
inline char* putDecimal(char* place, std::uint64_t value) {
  const auto low = static_cast<std::uint32_t>(value);
  return low == value ? putDecimal(place, low) : putLongDecimal(place, value);
}

/// The text of a format that has no `HexForm`.
char* putOtherNumber(char* place, Format format, std::uint64_t value);

inline char* putNumber(char* place, Format format, std::uint64_t value) {
  const HexForm& form = hexForms[static_cast<std::size_t>(format)];
  if (form.digits != 0) return putHexNumber(place, form, value);
  if (format == Format::dec) return putDecimal(place, static_cast<std::int32_t>(value));
  if (format == Format::udec) return putDecimal(place, value);
  return putOtherNumber(place, format, value);
}

}  // namespace mpuevent

#endif
