#include "FuzzTarget.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <ctime>
#include <functional>
#include <iostream>
#include <limits>

namespace mpuevent::fuzz {

namespace {

// Twice the time for twice the size, and what caches and fresh memory add, is linear; n times its
// root would be 2.8 times. Such growth shows at every doubling, a step in the work at one of them.
constexpr double kTimesForTwice = 2.4;
constexpr std::size_t kDoublings = 4;
// Work that takes no more is as good as linear: under the sanitizers the index of a text full of
// tags takes up to 270 ns a byte, of which some first shows at a doubling. A search of every open
// name takes 1,100 to 1,800 at 64 KiB.
constexpr double kSecondsPerByte = 400e-9;
constexpr std::size_t kShortest = 16384;
constexpr int kTries = 20;

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

void inLinearTime(std::size_t size,
                  const std::function<std::function<void()>(std::size_t size)>& workOf) {
  if (size < kShortest) return;
  std::array<double, kDoublings + 1> least;  // of all of it, of a half, ...
  least.fill(std::numeric_limits<double>::infinity());
  for (int tries = 0; tries < kTries; ++tries) {
    for (std::size_t half = 0; half < least.size(); ++half) {
      const std::function<void()> work = workOf(size >> half);
      const double start = processorSeconds();
      work();
      least[half] = std::min(least[half], processorSeconds() - start);
      if (least[0] <= kSecondsPerByte * static_cast<double>(size)) return;
    }
    const auto grows = [](double twice, double once) { return twice > kTimesForTwice * once; };
    if (std::adjacent_find(least.begin(), least.end(), std::not_fn(grows)) != least.end()) return;
  }
  require(false, "time in proportion to the input");
}

}  // namespace mpuevent::fuzz
