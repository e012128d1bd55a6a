#include "FuzzTarget.h"

#include <cstdlib>
#include <ctime>
#include <iostream>

namespace mpuevent::fuzz {

namespace {

// Under the sanitizers most work takes about 1 us a byte, and 5 ms if all of it is new to the
// processor's caches, both on a machine with more to do than processors. A look at all of 64 KiB
// for each of its bytes takes seconds, where 0.28 s are allowed.
constexpr double kSecondsOfAnyWork = 0.02;
constexpr double kSecondsPerByte = 4e-6;
constexpr int kTries = 3;

// Of this thread alone: what else the machine does counts for little.
double processorSeconds() {
  std::timespec now{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

}  // namespace

void require(bool holds, const char* property) {
  if (!holds) {
    std::cerr << "does not hold: " << property << std::endl;
    std::abort();
  }
}

bool isReplay = false;

bool isThorough(std::string_view input, std::uint32_t share) {
  std::uint32_t mixed = 0;
  for (const char byte : input) mixed = (mixed ^ static_cast<unsigned char>(byte)) * 0x9E3779B1U;
  return isReplay || (mixed >> 16) % share == 0;
}

void inLinearTime(std::size_t bytes, const std::function<void()>& work) {
  const double bound = kSecondsOfAnyWork + kSecondsPerByte * static_cast<double>(bytes);
  bool held = false;
  for (int tries = 0; tries < kTries && !held; ++tries) {
    const double start = processorSeconds();
    work();
    held = processorSeconds() - start <= bound;
  }
  require(held, "time in proportion to the input");
}

}  // namespace mpuevent::fuzz
