#include "Utf8.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

namespace mpuevent::tool {

namespace {

using Pegasus::Char16;

constexpr std::size_t kLargestUnitWidth = 3;
constexpr char32_t kReplacement = 0xFFFD;
constexpr std::string_view kHexDigits = "0123456789ABCDEF";

constexpr bool isHighSurrogate(char32_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; }
constexpr bool isLowSurrogate(char32_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }

char* put(char* to, char32_t code) {
  const auto tail = [code](int shift) { return static_cast<char>(0x80 | (code >> shift & 0x3F)); };
  if (code < 0x80) {
    *to++ = static_cast<char>(code);
  } else if (code < 0x800) {
    *to++ = static_cast<char>(0xC0 | code >> 6);
    *to++ = tail(0);
  } else if (code < 0x10000) {
    *to++ = static_cast<char>(0xE0 | code >> 12);
    *to++ = tail(6);
    *to++ = tail(0);
  } else {
    *to++ = static_cast<char>(0xF0 | code >> 18);
    *to++ = tail(12);
    *to++ = tail(6);
    *to++ = tail(0);
  }
  return to;
}

constexpr int kBlock = 16;

// Whether a block of units is ASCII; it is then copied. A loop of fixed length over units of its
// own: this becomes vector code.
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

std::string_view Utf8Text::assign(const Pegasus::String& text) {
  const std::size_t size = text.size();
  if (const std::size_t enough = size * kLargestUnitWidth + padding; room_.size() < enough) {
    room_.resize(enough);
  }
  char* to = room_.data();
  const Char16* from = text.getChar16Data();
  const Char16* const end = from + size;
  for (;;) {
    for (; end - from >= kBlock && copyAsciiBlock(to, from); from += kBlock) to += kBlock;
    while (from != end && std::uint16_t{*from} < 0x80) {
      *to++ = static_cast<char>(std::uint16_t{*from++});
    }
    if (from == end) break;
    const char32_t unit = std::uint16_t{*from++};
    if (isHighSurrogate(unit) && from != end && isLowSurrogate(std::uint16_t{*from})) {
      to = put(to, 0x10000 + ((unit - 0xD800) << 10) + (std::uint16_t{*from++} - 0xDC00U));
    } else {
      to = put(to, isHighSurrogate(unit) || isLowSurrogate(unit) ? kReplacement : unit);
    }
  }
  return {room_.data(), static_cast<std::size_t>(to - room_.data())};
}

void appendVisible(std::string& to, std::string_view utf8) {
  const auto appendEscape = [&to](unsigned char byte) {
    to += "\\x";
    to += kHexDigits[byte >> 4];
    to += kHexDigits[byte & 0xF];
  };
  for (std::size_t i = 0; i < utf8.size(); ++i) {
    const auto byte = static_cast<unsigned char>(utf8[i]);
    const unsigned next = i + 1 < utf8.size() ? static_cast<unsigned char>(utf8[i + 1]) : 0;
    if (byte < 0x20 || byte == 0x7F) {
      appendEscape(byte);
    } else if (byte == 0xC2 && next >= 0x80 && next < 0xA0) {  // U+0080 to U+009F
      appendEscape(static_cast<unsigned char>(next));
      ++i;
    } else {
      to += utf8[i];
    }
  }
}

}  // namespace mpuevent::tool
