#ifndef MPUEVENT_BENCH_ALLOCATIONS_H
#define MPUEVENT_BENCH_ALLOCATIONS_H

#include <cstdint>

namespace mpuevent::bench {

/// How often the whole program, its shared libraries included, has taken memory from the heap;
/// exact as long as it has one thread.
std::uint64_t allocations();

}  // namespace mpuevent::bench

#endif
