#include "event/Text.h"

#include <charconv>
#include <cstdint>
#include <cstring>

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

/// The character that starts at `at`, which steps behind it; false if the bytes there are not
/// one character of UTF-8 in its shortest form.
bool nextCharacter(std::string_view bytes, std::size_t& at, std::uint32_t& character) {
  const auto byteAt = [bytes](std::size_t i) -> std::uint32_t {
    return static_cast<unsigned char>(bytes[i]);
  };
  const std::uint32_t lead = byteAt(at);
  if (lead < 0x80) {
    character = lead;
    ++at;
    return true;
  }
  const std::size_t length = lead < 0xC2   ? 0
                             : lead < 0xE0 ? 2
                             : lead < 0xF0 ? 3
                             : lead < 0xF5 ? 4
                                           : 0;
  if (length == 0 || length > bytes.size() - at) return false;
  character = lead & (0x7FU >> length);
  for (std::size_t i = 1; i < length; ++i) {
    const std::uint32_t next = byteAt(at + i);
    if ((next & 0xC0) != 0x80) return false;
    character = character << 6 | (next & 0x3F);
  }
  const bool shortest = length == 2 || character >= (length == 3 ? 0x800U : 0x10000U);
  const bool surrogate = character >= 0xD800 && character <= 0xDFFF;
  if (!shortest || surrogate || character > 0x10FFFF) return false;
  at += length;
  return true;
}

bool fromUtf8(std::string_view bytes, Units& units) {
  for (std::size_t at = 0; at < bytes.size();) {
    std::uint32_t character = 0;
    if (!nextCharacter(bytes, at, character)) return false;
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
    if (!nextCharacter(bytes, at, character)) return false;
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
