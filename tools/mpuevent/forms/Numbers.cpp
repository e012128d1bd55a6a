#include "Numbers.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <iterator>

namespace mpuevent::tool {

constinit const std::array<Digits, kGroup> kDigits = [] {
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

namespace {

constexpr unsigned kTwoGroups = kGroup * kGroup;

char* putBehind(char* to, std::uint32_t group) {
  const Digits& digits = kDigits[group];
  std::memcpy(to, digits.behind.data(), digits.behind.size());
  return to + digits.behind.size();
}

}  // namespace

char* writeLongDecimal(char* to, std::uint64_t number) {
  const auto last = static_cast<std::uint32_t>(number % kTwoGroups);
  to = number < kTwoGroups ? writeDecimal(to, last / kGroup)
                           : putBehind(writeDecimal(to, number / kTwoGroups), last / kGroup);
  return putBehind(to, last % kGroup);
}

}  // namespace mpuevent::tool
