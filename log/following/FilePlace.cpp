#include "log/following/FilePlace.h"

namespace mpuevent::log {

std::uint64_t digestOf(std::span<const unsigned char> bytes, std::uint64_t before) {
  constexpr std::uint64_t prime = 0x100000001B3;
  std::uint64_t digest = before;
  for (const unsigned char byte : bytes) digest = (digest ^ byte) * prime;
  return digest;
}

}  // namespace mpuevent::log
