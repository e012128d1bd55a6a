#include "Utf8.h"

#include <Pegasus/Common/Exception.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

#include "Numbers.h"
#include "event/Utf8.h"

namespace mpuevent::tool {

namespace {

using Pegasus::Char16;

constexpr std::size_t kLargestUnitWidth = 3;
constexpr char32_t kReplacement = 0xFFFD;

constexpr bool isHighSurrogate(char32_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; }
constexpr bool isLowSurrogate(char32_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }

constexpr std::size_t kBlock = 16;

template <typename Block>
std::uint32_t anyBits(const Block& block) {
  std::array<std::uint32_t, sizeof block / sizeof(std::uint32_t)> words;
  std::memcpy(words.data(), block.data(), sizeof block);
  std::uint32_t any = 0;
  for (const std::uint32_t word : words) any |= word;
  return any;
}

/// What a text is found to be when it is copied.
enum class Kind { other, ascii, plain };

// Copies a text of a block or more, as far as it is ASCII, the last units of it once more. Loops of
// fixed length over units of their own become vector code, by themselves at least, and all blocks
// are judged together.
template <std::size_t block>
[[gnu::noinline]] Kind copyBlocks(char* to, const Char16* from, std::size_t size) {
  std::array<std::uint16_t, block> wide{};
  std::array<unsigned char, block> marks{};
  std::array<unsigned char, block> highest{};
  std::array<unsigned char, block> lowest;
  lowest.fill(0xFF);
  const auto copyBlock = [&](std::size_t at) {
    std::array<std::uint16_t, block> units;
    std::copy_n(from + at, block, units.begin());
    std::array<unsigned char, block> bytes;
    for (std::size_t i = 0; i < block; ++i) bytes[i] = static_cast<unsigned char>(units[i]);
    std::memcpy(to + at, bytes.data(), block);
    for (std::size_t i = 0; i < block; ++i) wide[i] |= units[i];
    for (std::size_t i = 0; i < block; ++i) {
      const unsigned char byte = bytes[i];
      marks[i] |= ((byte == '"') | (byte == '\\')) != 0 ? 0xFF : 0;
      highest[i] = std::max(highest[i], byte);
      lowest[i] = std::min(lowest[i], byte);
    }
  };
  std::size_t at = 0;
  for (; size - at > 2 * block; at += 2 * block) {
    copyBlock(at);
    copyBlock(at + block);
  }
  if (size - at > block) copyBlock(at);
  copyBlock(size - block);
  for (std::size_t i = 0; i < block; ++i) {
    marks[i] |=
        static_cast<unsigned char>((highest[i] >= 0x7F ? 1 : 0) | (lowest[i] < ' ' ? 1 : 0));
  }
  constexpr std::uint32_t notAscii = 0xFF80FF80;
  if ((anyBits(wide) & notAscii) != 0) return Kind::other;
  return anyBits(marks) == 0 ? Kind::plain : Kind::ascii;
}

Kind copyAscii(char* to, const Char16* from, std::size_t size) {
  if (size >= kBlock) return copyBlocks<kBlock>(to, from, size);
  if (size >= kBlock / 2) return copyBlocks<kBlock / 2>(to, from, size);
  if (size >= kBlock / 4) return copyBlocks<kBlock / 4>(to, from, size);
  const bool isPlain = std::all_of(from, from + size, [&to](std::uint16_t unit) {
    *to++ = static_cast<char>(unit);
    return unit >= ' ' && unit < 0x7F && unit != '"' && unit != '\\';
  });
  return isPlain ? Kind::plain : Kind::other;
}

// Whether a block of units is ASCII; it is then copied.
bool copyAsciiBlock(char* to, const Char16* from) {
  std::array<std::uint16_t, kBlock> units;
  std::copy_n(from, kBlock, units.begin());
  std::array<char, kBlock> bytes;
  unsigned seen = 0;
  for (std::size_t i = 0; i < kBlock; ++i) {
    seen |= units[i];
    bytes[i] = static_cast<char>(units[i]);
  }
  std::copy_n(bytes.begin(), kBlock, to);
  return seen < 0x80;
}

}  // namespace

PaddedView Utf8Text::assign(const Pegasus::String& text) {
  const std::size_t size = text.size();
  if (const std::size_t enough = size * kLargestUnitWidth + PaddedView::padding;
      room_.size() < enough) {
    room_.resize(enough);
  }
  char* to = room_.data();
  const Char16* from = text.getChar16Data();
  if (const Kind kind = copyAscii(to, from, size); kind != Kind::other) {
    return PaddedView({to, size}, kind == Kind::plain);
  }
  const Char16* const end = from + size;
  for (;;) {
    for (; end - from >= std::ptrdiff_t{kBlock} && copyAsciiBlock(to, from); from += kBlock)
      to += kBlock;
    while (from != end && std::uint16_t{*from} < 0x80) {
      *to++ = static_cast<char>(std::uint16_t{*from++});
    }
    if (from == end) break;
    const char32_t unit = std::uint16_t{*from++};
    if (isHighSurrogate(unit) && from != end && isLowSurrogate(std::uint16_t{*from})) {
      to = writeUtf8(to, 0x10000 + ((unit - 0xD800) << 10) + (std::uint16_t{*from++} - 0xDC00U));
    } else {
      to = writeUtf8(to, isHighSurrogate(unit) || isLowSurrogate(unit) ? kReplacement : unit);
    }
  }
  return PaddedView({room_.data(), static_cast<std::size_t>(to - room_.data())}, false);
}

PaddedView Utf8Text::assignBytes(std::string_view bytes) {
  if (bytes.empty()) return assign({});
  try {
    return assign({bytes.data(), static_cast<Pegasus::Uint32>(bytes.size())});
  } catch (const Pegasus::Exception&) {
    std::vector<Char16> units;
    for (const char byte : bytes) units.emplace_back(static_cast<unsigned char>(byte));
    return assign({units.data(), static_cast<Pegasus::Uint32>(units.size())});
  }
}

std::size_t Utf8Cursor::byteOf(std::size_t unit) {
  for (; unit_ < unit && byte_ < utf8_.size(); ++unit_) {
    const auto lead = static_cast<unsigned char>(utf8_[byte_]);
    byte_ += lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    if (lead >= 0xF0) ++unit_;  // a pair of surrogates
  }
  return byte_;
}

namespace {

// Whether a block is ASCII with nothing to show in another way; it is copied.
bool copyVisibleBlock(char* to, const char* from) {
  std::array<signed char, PaddedView::padding> block;
  std::memcpy(block.data(), from, block.size());
  unsigned char found = 0;
  for (const signed char byte : block) {
    found = static_cast<unsigned char>(found | (byte < 0x20) | (byte == 0x7F));
  }
  std::memcpy(to, block.data(), block.size());
  return found == 0;
}

// Shows what begins at `at`; returns how many bytes that was. Room for kLongestShown must be there.
std::size_t showCharacter(char*& to, std::string_view utf8, std::size_t at) {
  const auto byte = static_cast<unsigned char>(utf8[at]);
  const unsigned next = at + 1 < utf8.size() ? static_cast<unsigned char>(utf8[at + 1]) : 0;
  const bool lateControl = byte == 0xC2 && next >= 0x80 && next < 0xA0;  // U+0080 to U+009F
  if (byte >= 0x20 && byte != 0x7F && !lateControl) {
    *to++ = utf8[at];
    return 1;
  }
  *to++ = '\\';
  *to++ = 'x';
  to = writeHexByte(to, lateControl ? static_cast<unsigned char>(next) : byte);
  return lateControl ? 2 : 1;
}

}  // namespace

char* showText(char* to, PaddedView utf8) {
  constexpr std::size_t block = PaddedView::padding;
  const std::string_view text = utf8;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t count = std::min(block, text.size() - at);
    if (copyVisibleBlock(to, text.data() + at)) {
      at += count;
      to += count;
    } else {
      for (const std::size_t end = at + count; at < end;) at += showCharacter(to, text, at);
    }
  }
  return to;
}

char* showText(char* to, std::string_view utf8) {
  for (std::size_t at = 0; at < utf8.size();) at += showCharacter(to, utf8, at);
  return to;
}

}  // namespace mpuevent::tool
