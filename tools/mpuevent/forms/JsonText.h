#ifndef MPUEVENT_TOOL_JSONTEXT_H
#define MPUEVENT_TOOL_JSONTEXT_H

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "Numbers.h"
#include "PaddedView.h"

namespace mpuevent::tool {

// Copying into JSON strings. Texts with nothing to escape are nearly all, and short: they are
// copied and looked at in blocks of fixed size, where a call of memcpy would cost more.

inline constexpr std::size_t kLongestJsonEscape = 6;  // "\\u001F"

/// The room that the copy of a text takes at most.
constexpr std::size_t jsonRoom(std::size_t size) {
  return size * kLongestJsonEscape + PaddedView::padding;
}

/// What copyJsonBlock() looks for: what must be escaped, and what is not ASCII.
constexpr bool isJsonSpecial(char c) {
  const auto byte = static_cast<unsigned char>(c);
  return byte < 0x20 || byte == '"' || byte == '\\' || byte >= 0x7F;
}

inline constexpr auto kJsonSpecial = [] {
  std::array<bool, 256> special{};
  for (std::size_t byte = 0; byte < special.size(); ++byte) {
    special[byte] = isJsonSpecial(static_cast<char>(byte));
  }
  return special;
}();

/// Copies `count` bytes; whether there is nothing special among them.
template <std::size_t count>
inline bool copyJsonBlock(char* to, const char* from) {
  std::array<signed char, count> block;
  std::memcpy(block.data(), from, count);
  // Loops of fixed length over bytes of their own become vector code. What is no ASCII is negative.
  std::array<std::uint64_t, count / sizeof(std::uint64_t)> found;
  std::array<unsigned char, count> special;
  for (std::size_t i = 0; i < count; ++i) {
    const signed char byte = block[i];
    special[i] =
        static_cast<unsigned char>((byte < 0x20) | (byte == '"') | (byte == '\\') | (byte == 0x7F));
  }
  std::memcpy(found.data(), special.data(), count);
  std::memcpy(to, block.data(), count);
  std::uint64_t any = 0;
  for (const std::uint64_t part : found) any |= part;
  return any == 0;
}

/// Copies the character at `at` of the text, escaped if need be, and moves both on. A character of
/// several bytes may be copied byte by byte. Control characters from U+0080 on are escaped too, as
/// a terminal may take them for commands.
inline void copyJsonCharacter(char*& to, std::string_view utf8, std::size_t& at) {
  auto byte = static_cast<unsigned char>(utf8[at++]);
  const unsigned next = at < utf8.size() ? static_cast<unsigned char>(utf8[at]) : 0;
  const bool lateControl = byte == 0xC2 && next >= 0x80 && next < 0xA0;
  if (lateControl) byte = static_cast<unsigned char>(utf8[at++]);
  if (byte < 0x20 || byte == 0x7F || lateControl) {
    to = std::copy_n("\\u00", 4, to);
    to = writeHexByte(to, byte);
  } else {
    if (byte == '"' || byte == '\\') *to++ = '\\';
    *to++ = static_cast<char>(byte);
  }
}

/// Copies the text as it stands between the quotes of a JSON string to where there is jsonRoom()
/// for it; returns the end.
inline char* copyJsonText(char* to, PaddedView utf8) {
  constexpr std::size_t block = PaddedView::padding;
  const std::string_view text = utf8;
  if (text.size() <= block / 2 && copyJsonBlock<block / 2>(to, text.data())) {
    return to + text.size();
  }
  const auto special = [&text](std::size_t at) {
    return kJsonSpecial[static_cast<unsigned char>(text[at])];
  };
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t end = std::min(at + block, text.size());
    const std::size_t begin = at;
    if (copyJsonBlock<block>(to, text.data() + at)) {
      at = end;
    } else {
      while (at < end && !special(at)) ++at;
    }
    to += at - begin;
    while (at < text.size() && special(at)) copyJsonCharacter(to, text, at);
  }
  return to;
}

/// The same for a text that has no padding.
inline char* copyJsonText(char* to, std::string_view utf8) {
  for (std::size_t at = 0; at < utf8.size();) copyJsonCharacter(to, utf8, at);
  return to;
}

}  // namespace mpuevent::tool

#endif
