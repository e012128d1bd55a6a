#ifndef EVENT_TEXT_H
#define EVENT_TEXT_H

#include <Pegasus/Common/String.h>

#include <cstdint>
#include <string_view>
#include <vector>

namespace mpuevent {

/// Bytes of a record or a caller as a text: UTF-8 if they are valid UTF-8, else each byte as the
/// Latin-1 character of its number. Nothing is lost and nothing throws but an allocation. This is
/// the one way from bytes to `Pegasus::String`.
Pegasus::String toString(std::string_view bytes);

/// The same of bytes that are ASCII.
inline Pegasus::String asciiString(std::string_view bytes) {
  if (bytes.empty()) return {};
  return {bytes.data(), static_cast<Pegasus::Uint32>(bytes.size())};
}

bool isAscii(std::string_view bytes);

/// Whether `toString` takes the bytes as UTF-8.
bool isUtf8(std::string_view bytes);

/// For a text that `toString` takes as UTF-8: how many of its units come before each byte, and
/// before its end.
std::vector<Pegasus::Uint32> unitPositions(std::string_view utf8);

/// The number as "%d" prints it: 2^31 and above come out negative.
Pegasus::String decimalString(std::uint32_t number);

/// A text that was cut inside an escaped pair ends in one backslash: a period takes its place.
/// `start` is the text's first character, `end` is behind its last.
void repairLoneBackslash(char* start, char* end);

/// A caller's text, which may be null.
std::string_view viewOf(const char* text);

}  // namespace mpuevent

#endif
