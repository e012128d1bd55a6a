#include "HexDump.h"

#include <algorithm>

#include "Numbers.h"

namespace mpuevent::tool {

namespace {

constexpr std::size_t kPerLine = 16;
constexpr std::size_t kLongestLine = 80;

// "  0010  68 65 6C 6C 6F ...                       |hello|": two blanks before each part, and one
// more in the middle of the digits.
char* writeLine(char* to, std::size_t offset, std::span<const unsigned char> bytes) {
  to = std::fill_n(to, 2, ' ');
  to = writeHexByte(to, static_cast<unsigned char>(offset >> 8));
  to = writeHexByte(to, static_cast<unsigned char>(offset));
  *to++ = ' ';
  for (std::size_t i = 0; i < kPerLine; ++i) {
    to = std::fill_n(to, i == kPerLine / 2 ? 2 : 1, ' ');
    to = i < bytes.size() ? writeHexByte(to, bytes[i]) : std::fill_n(to, 2, ' ');
  }
  to = std::copy_n("  |", 3, to);
  to = std::transform(bytes.begin(), bytes.end(), to, [](unsigned char byte) {
    return byte >= 0x20 && byte < 0x7F ? static_cast<char>(byte) : '.';
  });
  return std::copy_n("|\n", 2, to);
}

}  // namespace

void appendHexDump(TextPen& to, std::span<const unsigned char> bytes) {
  for (std::size_t at = 0; at < bytes.size(); at += kPerLine) {
    const auto line = bytes.subspan(at, std::min(kPerLine, bytes.size() - at));
    to.advanceTo(writeLine(to.reserve(kLongestLine), at, line));
  }
}

}  // namespace mpuevent::tool
