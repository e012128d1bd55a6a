#ifndef MPUEVENT_TOOL_SUMMARY_SEQUENCE_H
#define MPUEVENT_TOOL_SUMMARY_SEQUENCE_H

#include <cstdint>
#include <vector>

namespace mpuevent::tool {

/// Sequence ids that are missing between two neighbours of a log.
struct SequenceGap {
  std::uint32_t after;           ///< the id before those missing
  std::uint32_t before;          ///< the id behind them
  std::uint32_t afterTimestamp;  ///< of these two events
  std::uint32_t beforeTimestamp;

  std::uint32_t missing() const { return before - after - 1; }
};

/// How the sequence ids of one log go on, in file order. Ids count modulo 2^32: less than half of
/// that forward is forward, anything else is a step back, with which a new run begins.
class Sequence {
 public:
  /// A gap is listed unless `listed` are listed already; whether it was.
  bool add(std::uint32_t id, std::uint32_t timestamp, std::size_t listed);

  std::uint32_t first() const { return first_; }
  std::uint32_t last() const { return last_; }
  std::uint64_t missing() const { return missing_; }
  std::uint64_t repeats() const { return repeats_; }
  std::uint64_t stepsBack() const { return stepsBack_; }
  std::uint64_t gapCount() const { return gapCount_; }
  const std::vector<SequenceGap>& gaps() const { return gaps_; }

 private:
  bool any_ = false;
  std::uint32_t first_ = 0;
  std::uint32_t last_ = 0;
  std::uint32_t lastTimestamp_ = 0;
  std::uint64_t missing_ = 0;
  std::uint64_t repeats_ = 0;
  std::uint64_t stepsBack_ = 0;
  std::uint64_t gapCount_ = 0;
  std::vector<SequenceGap> gaps_;
};

}  // namespace mpuevent::tool

#endif
