#ifndef MPUEVENT_FUZZ_FUZZTARGET_H
#define MPUEVENT_FUZZ_FUZZTARGET_H

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string_view>

/// A target tries one input, and aborts when one of its properties does not hold. libFuzzer calls
/// it, or replay_main.cpp with the bytes of files.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace mpuevent::fuzz {

/// Aborts, naming the property, if it does not hold.
void require(bool holds, const char* property);

/// Whether properties are checked of this input that cost far more than what is tried: of one in
/// `share`, told by its bytes, so that an input found to fail fails again; of each if it is
/// replayed.
bool isThorough(std::string_view input, std::uint32_t share = 128);
extern bool isReplay;

/// Aborts if work grows faster than what it is given: if its time, each time that this doubles up
/// to `size`, far more than doubles. `workOf` makes the work of a size, the same each time. Work
/// that seems to is tried again.
void inLinearTime(std::size_t size,
                  const std::function<std::function<void()>(std::size_t size)>& workOf);

}  // namespace mpuevent::fuzz

#endif
