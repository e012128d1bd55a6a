#include "event/Text.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <vector>

#include "event/Utf8.h"

namespace mpuevent {

namespace {

using Pegasus::Char16;
using Pegasus::String;

constexpr std::uint64_t highBits = 0x8080808080808080U;

template <class Word>
Word loaded(const char* at) {
  Word word;
  std::memcpy(&word, at, sizeof word);
  return word;
}

/// Of less than eight bytes: the first four and the last, or each.
bool isShortAscii(const char* bytes, std::size_t size) {
  if (size >= 4) {
    const auto seen = loaded<std::uint32_t>(bytes) | loaded<std::uint32_t>(bytes + size - 4);
    return (seen & static_cast<std::uint32_t>(highBits)) == 0;
  }
  if (size == 0) return true;
  const int seen = bytes[0] | bytes[size / 2] | bytes[size - 1];
  return (seen & 0x80) == 0;
}

Char16 unit(std::uint32_t value) { return Char16(static_cast<Pegasus::Uint16>(value)); }

/// Writes the units of the ASCII bytes that the text begins with, and returns how many there are.
std::size_t putAscii(Char16* units, std::string_view bytes) {
  constexpr std::size_t step = 2 * sizeof highBits;
  std::size_t at = 0;
  for (; bytes.size() - at >= step; at += step) {
    std::uint64_t words[2];
    std::memcpy(words, bytes.data() + at, step);
    if (((words[0] | words[1]) & highBits) != 0) break;
    // A copy that nothing else points to, and a fixed count: compilers make vector code of this.
    unsigned char chunk[step];
    std::memcpy(chunk, bytes.data() + at, step);
    for (std::size_t i = 0; i < step; ++i) units[at + i] = unit(chunk[i]);
  }
  for (; at < bytes.size(); ++at) {
    const auto byte = static_cast<unsigned char>(bytes[at]);
    if (byte >= 0x80) break;
    units[at] = unit(byte);
  }
  return at;
}

/// Writes the units of UTF-8, never more than there are bytes, and returns their end; null if it is
/// not UTF-8.
Char16* putUtf8(Char16* units, std::string_view bytes) {
  for (std::size_t at = 0; at < bytes.size();) {
    std::uint32_t character = static_cast<unsigned char>(bytes[at]);
    if (character < 0x80) {
      const std::size_t size = putAscii(units, bytes.substr(at));
      units += size;
      at += size;
      continue;
    }
    if (!readUtf8(bytes, at, character)) return nullptr;
    if (character >= 0x10000) {
      *units++ = unit(0xD800 + ((character - 0x10000) >> 10));
      *units++ = unit(0xDC00 + (character & 0x3FF));
    } else {
      *units++ = unit(character);
    }
  }
  return units;
}

Char16* putLatin1(Char16* units, std::string_view bytes) {
  return std::transform(bytes.begin(), bytes.end(), units,
                        [](char byte) { return unit(static_cast<unsigned char>(byte)); });
}

/// What the text begins with, at most so many bytes: whole characters, if it is UTF-8.
std::string_view pieceOf(std::string_view bytes, std::size_t most) {
  if (bytes.size() <= most) return bytes;
  std::size_t size = most;
  while (size > most - longestUtf8 && (static_cast<unsigned char>(bytes[size]) & 0xC0) == 0x80) {
    --size;
  }
  return bytes.substr(0, size);
}

/// Appends the units that `put` makes of the bytes, piece by piece: a long text takes nothing from
/// the heap but itself. Returns false where `put` does.
bool appendUnits(String& text, std::string_view bytes,
                 Char16* (*put)(Char16* units, std::string_view bytes)) {
  Char16 room[512];
  while (!bytes.empty()) {
    const std::string_view piece = pieceOf(bytes, std::size(room));
    const Char16* const end = put(room, piece);
    if (end == nullptr) return false;
    const bool isFirst = text.size() == 0;
    if (isFirst && piece.size() < bytes.size())
      text.reserveCapacity(static_cast<Pegasus::Uint32>(bytes.size()));
    text.append(room, static_cast<Pegasus::Uint32>(end - room));
    bytes.remove_prefix(piece.size());
  }
  return true;
}

}  // namespace

/// Word by word; the last ones may look at bytes a second time.
bool isAscii(std::string_view bytes) {
  constexpr std::size_t step = 4 * sizeof(std::uint64_t);
  const std::size_t size = bytes.size();
  const char* const start = bytes.data();
  if (size < sizeof highBits) return isShortAscii(start, size);
  auto seen = loaded<std::uint64_t>(start + size - sizeof highBits);
  std::size_t at = 0;
  for (; size - at >= step; at += step) {
    std::uint64_t words[4];
    std::memcpy(words, start + at, step);
    seen |= (words[0] | words[1]) | (words[2] | words[3]);
  }
  for (; size - at >= sizeof seen; at += sizeof seen) seen |= loaded<std::uint64_t>(start + at);
  return (seen & highBits) == 0;
}

String toString(std::string_view bytes) {
  if (isAscii(bytes)) return asciiString(bytes);
  // The units are made here: String's own reading of UTF-8 would replace U+FFFE and U+FFFF.
  String text;
  if (appendUnits(text, bytes, putUtf8)) return text;
  String latin1;
  appendUnits(latin1, bytes, putLatin1);
  return latin1;
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
