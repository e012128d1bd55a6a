#ifndef MPUEVENT_TOOL_NUMBERS_H
#define MPUEVENT_TOOL_NUMBERS_H

#include <array>
#include <charconv>
#include <cstdint>
#include <string>

namespace mpuevent::tool {

inline void appendNumber(std::string& to, std::uint64_t number, int base) {
  std::array<char, 20> digits;
  to.append(digits.data(),
            std::to_chars(digits.data(), digits.data() + digits.size(), number, base).ptr);
}

inline void appendDecimal(std::string& to, std::uint64_t number) { appendNumber(to, number, 10); }

/// "0x1a2b"
inline void appendHex(std::string& to, std::uint64_t number) {
  to += "0x";
  appendNumber(to, number, 16);
}

}  // namespace mpuevent::tool

#endif
