#include "JsonText.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <cstring>

#include "event/HexDigits.h"

namespace mpuevent::tool {

namespace {

// The next eight bytes, each 0 or 1, as bits, the first one the lowest.
std::uint32_t bitsOf(const unsigned char* bytes) {
  std::uint64_t word;
  std::memcpy(&word, bytes, sizeof word);
  if constexpr (std::endian::native == std::endian::big) word = __builtin_bswap64(word);
  return static_cast<std::uint32_t>(word * 0x0102040810204080 >> 56);
}

constexpr std::size_t kBlock = PaddedView::padding;

// Which bytes of a block may have to be escaped, a bit each: the quote, the backslash, control
// characters, and what those of U+0080 to U+009F begin with. Loops of fixed length over bytes of
// their own become vector code.
std::uint32_t specialOf(const char* block) {
  std::array<unsigned char, kBlock> bytes;
  std::memcpy(bytes.data(), block, kBlock);
  std::array<unsigned char, kBlock> special;
  for (std::size_t i = 0; i < kBlock; ++i) {
    const unsigned char byte = bytes[i];
    special[i] = static_cast<unsigned char>((byte < 0x20) | (byte == '"') | (byte == '\\') |
                                            (byte == 0x7F) | (byte == 0xC2));
  }
  std::uint32_t bits = 0;
  for (std::size_t i = 0; i < kBlock; i += 8) bits |= bitsOf(&special[i]) << i;
  return bits;
}

// Copies the character at `at` of the text, escaped if need be, and moves both on. A character of
// several bytes may be copied byte by byte. Control characters from U+0080 on are escaped too, as
// a terminal may take them for commands.
void copyJsonCharacter(char*& to, std::string_view utf8, std::size_t& at) {
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

}  // namespace

char* escapeJsonText(char* to, PaddedView utf8) {
  const std::string_view text = utf8;
  std::size_t at = 0;  // what is before it has been copied
  for (std::size_t block = 0; block < text.size(); block += kBlock) {
    const char* const bytes = text.data();
    const std::size_t end = std::min(block + kBlock, text.size());
    for (std::uint32_t bits = specialOf(bytes + block); bits != 0; bits &= bits - 1) {
      const std::size_t special = block + static_cast<std::size_t>(std::countr_zero(bits));
      if (special >= end) break;
      std::memcpy(to, bytes + at, kBlock);
      to += special - at;
      at = special;
      if (bytes[at] == '"' || bytes[at] == '\\') {
        *to++ = '\\';  // and it itself with what follows
      } else {
        copyJsonCharacter(to, text, at);
      }
    }
    if (at < end) {
      std::memcpy(to, bytes + at, kBlock);
      to += end - at;
      at = end;
    }
  }
  return to;
}

char* copyJsonText(char* to, std::string_view utf8) {
  for (std::size_t at = 0; at < utf8.size();) copyJsonCharacter(to, utf8, at);
  return to;
}

}  // namespace mpuevent::tool
