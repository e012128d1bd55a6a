#ifndef MPUEVENT_TOOL_STORE_PROGRESS_H
#define MPUEVENT_TOOL_STORE_PROGRESS_H

#include <chrono>
#include <cstdint>

namespace mpuevent::tool {

/// A line on standard error, if that is a terminal, that tells how far a long command is. What is
/// written next to the terminal begins in its place.
class Progress {
 public:
  Progress();
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;
  /// Takes the line away.
  ~Progress();

  /// May be called often. `files` is shown if there are any.
  void tell(std::uint64_t events, std::uint64_t files);

 private:
  using Clock = std::chrono::steady_clock;

  const bool shown_;
  const Clock::time_point begin_ = Clock::now();
  Clock::time_point told_ = begin_;
  bool any_ = false;
};

}  // namespace mpuevent::tool

#endif
