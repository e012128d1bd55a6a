#ifndef EVENT_NUMBERS_H
#define EVENT_NUMBERS_H

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <initializer_list>

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
constexpr std::size_t longestWord = 12;  ///< of several, with what stands before it

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

/// The lowest `count` digits, at least one and at most eight.
inline char* putHexWord(char* place, std::uint32_t word, unsigned count, Letters letters) {
  std::uint64_t digits = hexDigitsOf(word, letters) << 8 * (8 - count);
  if constexpr (std::endian::native == std::endian::little) digits = __builtin_bswap64(digits);
  std::memcpy(place, &digits, sizeof digits);
  return place + count;
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
  place = putHexDigits(place + form.prefixSize, value, form.digits, form.letters);
  putLiteral(place, " (hex)");
  return place + form.markSize;
}

char* putDecimal(char* place, std::int32_t value);
char* putDecimal(char* place, std::uint64_t value);
/// The text of a format that has no `HexForm`.
char* putOtherNumber(char* place, Format format, std::uint64_t value);

inline char* putNumber(char* place, Format format, std::uint64_t value) {
  const HexForm& form = hexForms[static_cast<std::size_t>(format)];
  if (form.digits != 0) return putHexNumber(place, form, value);
  return putOtherNumber(place, format, value);
}

/// A value of several words.
char* putWords(char* place, Format format, std::initializer_list<std::uint32_t> words);

}  // namespace mpuevent

#endif
