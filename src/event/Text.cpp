#include "event/Text.h"

#include <charconv>
#include <cstdint>
#include <cstring>

#include "event/Utf8.h"

namespace mpuevent {

namespace {

using Pegasus::Char16;
using Pegasus::String;
using Units = std::vector<Char16>;

constexpr std::uint64_t highBits = 0x8080808080808080U;

std::uint64_t loaded(const char* at) {
  std::uint64_t word;
  std::memcpy(&word, at, sizeof word);
  return word;
}

bool isShortAscii(std::string_view bytes) {
  unsigned char seen = 0;
  for (const char byte : bytes) seen |= static_cast<unsigned char>(byte);
  return (seen & 0x80) == 0;
}

Char16 unit(std::uint32_t value) { return Char16(static_cast<Pegasus::Uint16>(value)); }

bool fromUtf8(std::string_view bytes, Units& units) {
  for (std::size_t at = 0; at < bytes.size();) {
    std::uint32_t character = 0;
    if (!readUtf8(bytes, at, character)) return false;
    if (character >= 0x10000) {
      units.push_back(unit(0xD800 + ((character - 0x10000) >> 10)));
      units.push_back(unit(0xDC00 + (character & 0x3FF)));
    } else {
      units.push_back(unit(character));
    }
  }
  return true;
}

}  // namespace

/// Word by word; the last ones may look at bytes a second time.
bool isAscii(std::string_view bytes) {
  constexpr std::size_t step = 4 * sizeof(std::uint64_t);
  const std::size_t size = bytes.size();
  const char* const start = bytes.data();
  if (size < sizeof highBits) return isShortAscii(bytes);
  std::uint64_t seen = loaded(start + size - sizeof seen);
  std::size_t at = 0;
  for (; size - at >= step; at += step) {
    std::uint64_t words[4];
    std::memcpy(words, start + at, step);
    seen |= (words[0] | words[1]) | (words[2] | words[3]);
  }
  for (; size - at >= sizeof seen; at += sizeof seen) seen |= loaded(start + at);
  return (seen & highBits) == 0;
}

String toString(std::string_view bytes) {
  if (isAscii(bytes)) return asciiString(bytes);
  // The units are made here: String's own reading of UTF-8 would replace U+FFFE and U+FFFF.
  Units units;
  units.reserve(bytes.size());
  if (!fromUtf8(bytes, units)) {
    units.clear();
    for (const char byte : bytes) units.push_back(unit(static_cast<unsigned char>(byte)));
  }
  return {units.data(), static_cast<Pegasus::Uint32>(units.size())};
}

bool isUtf8(std::string_view bytes) {
  if (isAscii(bytes)) return true;
  std::uint32_t character = 0;
  for (std::size_t at = 0; at < bytes.size();) {
    if (!readUtf8(bytes, at, character)) return false;
  }
  return true;
}

std::vector<Pegasus::Uint32> unitPositions(std::string_view utf8) {
  std::vector<Pegasus::Uint32> positions;
  positions.reserve(utf8.size() + 1);
  Pegasus::Uint32 units = 0;
  for (const char byte : utf8) {
    positions.push_back(units);
    const auto value = static_cast<unsigned char>(byte);
    const bool begins = (value & 0xC0) != 0x80;
    if (begins) units += value >= 0xF0 ? 2U : 1U;
  }
  positions.push_back(units);
  return positions;
}

String decimalString(std::uint32_t number) {
  char digits[11];
  const char* end =
      std::to_chars(digits, digits + sizeof digits, static_cast<std::int32_t>(number)).ptr;
  return asciiString({digits, end});
}

void repairLoneBackslash(char* start, char* end) {
  const std::string_view text(start, static_cast<std::size_t>(end - start));
  if (text.ends_with('\\') && !text.ends_with("\\\\")) end[-1] = '.';
}

std::string_view viewOf(const char* text) {
  return text == nullptr ? std::string_view{} : std::string_view{text};
}

}  // namespace mpuevent
