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

bool isAscii(std::string_view bytes) {
  constexpr std::uint64_t highBits = 0x8080808080808080U;
  const char* at = bytes.data();
  std::size_t left = bytes.size();
  std::uint64_t seen = 0;
  for (; left >= sizeof seen; at += sizeof seen, left -= sizeof seen) {
    std::uint64_t word;
    std::memcpy(&word, at, sizeof word);
    seen |= word;
  }
  for (; left > 0; ++at, --left) seen |= static_cast<unsigned char>(*at);
  return (seen & highBits) == 0;
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

String toString(std::string_view bytes) {
  if (bytes.empty()) return {};
  if (isAscii(bytes)) return {bytes.data(), static_cast<Pegasus::Uint32>(bytes.size())};
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
  return {digits, static_cast<Pegasus::Uint32>(end - digits)};
}

void repairLoneBackslash(char* start, char* end) {
  const std::string_view text(start, static_cast<std::size_t>(end - start));
  if (text.ends_with('\\') && !text.ends_with("\\\\")) end[-1] = '.';
}

std::string_view viewOf(const char* text) {
  return text == nullptr ? std::string_view{} : std::string_view{text};
}

}  // namespace mpuevent
