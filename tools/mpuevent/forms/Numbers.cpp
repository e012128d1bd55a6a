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

}  // namespace

char* writeDecimal(char* to, std::uint64_t number) {
  const Digits& last = kDigits[number % kGroup];
  if (number < kGroup) {
    std::memcpy(to, last.alone.data(), last.alone.size());
    return to + last.count;
  }
  to = writeDecimal(to, number / kGroup);
  std::memcpy(to, last.behind.data(), last.behind.size());
  return to + last.behind.size();
}

}  // namespace mpuevent::tool
