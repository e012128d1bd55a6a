#include "Numbers.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <iterator>

namespace mpuevent::tool {

namespace {

/// The digits of a number below 1000, in room of a fixed size.
struct Digits {
  std::array<char, 4> alone;   ///< as it is written by itself
  std::array<char, 3> behind;  ///< all three, as they are written behind others
  unsigned char count;         ///< of those alone
};

constexpr unsigned kGroup = 1000;
constexpr unsigned kTwoGroups = kGroup * kGroup;

constexpr auto kDigits = [] {
  std::array<Digits, kGroup> table{};
  for (unsigned number = 0; number < kGroup; ++number) {
    const char digits[] = {static_cast<char>('0' + number / 100),
                           static_cast<char>('0' + number / 10 % 10),
                           static_cast<char>('0' + number % 10)};
    Digits& entry = table[number];
    entry.count = number < 10 ? 1 : number < 100 ? 2 : 3;
    std::copy(std::begin(digits), std::end(digits), entry.behind.begin());
    std::copy(std::end(digits) - entry.count, std::end(digits), entry.alone.begin());
  }
  return table;
}();

char* putAlone(char* to, std::uint32_t group) {
  const Digits& digits = kDigits[group];
  std::memcpy(to, digits.alone.data(), digits.alone.size());
  return to + digits.count;
}

char* putBehind(char* to, std::uint32_t group) {
  const Digits& digits = kDigits[group];
  std::memcpy(to, digits.behind.data(), digits.behind.size());
  return to + digits.behind.size();
}

}  // namespace

char* writeDecimal(char* to, std::uint64_t number) {
  const auto last = static_cast<std::uint32_t>(number % kTwoGroups);
  if (number >= kTwoGroups) {
    to = writeDecimal(to, number / kTwoGroups);
    return putBehind(putBehind(to, last / kGroup), last % kGroup);
  }
  if (last < kGroup) return putAlone(to, last);
  return putBehind(putAlone(to, last / kGroup), last % kGroup);
}

}  // namespace mpuevent::tool
