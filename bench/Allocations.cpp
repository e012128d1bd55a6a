#include "Allocations.h"

#include <atomic>
#include <cstddef>

// glibc's own names of the functions that stand in front of them here: operator new and every
// library in the process come through these.
// NOLINTBEGIN(bugprone-reserved-identifier)
extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
}
// NOLINTEND(bugprone-reserved-identifier)

namespace {

constinit std::atomic<std::uint64_t> count{0};

// Not one locked addition: that would cost as much as a good part of what is measured, and one
// thread does the measuring.
void countOne() {
  count.store(count.load(std::memory_order_relaxed) + 1, std::memory_order_relaxed);
}

}  // namespace

extern "C" {

__attribute__((visibility("default"))) void* malloc(std::size_t size) {
  countOne();
  return __libc_malloc(size);
}

__attribute__((visibility("default"))) void* calloc(std::size_t elements, std::size_t size) {
  countOne();
  return __libc_calloc(elements, size);
}

__attribute__((visibility("default"))) void* realloc(void* block, std::size_t size) {
  countOne();
  return __libc_realloc(block, size);
}
}

namespace mpuevent::bench {

std::uint64_t allocations() { return count.load(std::memory_order_relaxed); }

}  // namespace mpuevent::bench
