#ifndef MPUEVENT_TOOL_SUMMARY_TIMEBINS_H
#define MPUEVENT_TOOL_SUMMARY_TIMEBINS_H

#include <array>
#include <cstdint>
#include <vector>

#include "summary/Summary.h"

namespace mpuevent::tool {

/// Counts events over time in one pass, whatever the times: bins of one width, a power of two that
/// doubles as often as it must for all to have room.
class TimeBins {
 public:
  /// A group of bins of its own.
  std::size_t addGroup();
  void add(std::size_t group, Severity severity, std::uint32_t timestamp);

  /// Begin and end of the axis and its number of columns, at most `mostColumns`.
  TimeAxis axis(std::size_t mostColumns) const;
  std::vector<TimeLanes::Column> columns(std::size_t group, std::size_t mostColumns) const;
  /// The first and last column of `count` that a time from one to another touches; false if none.
  bool columnsOf(std::uint32_t from, std::uint32_t to, std::size_t count, std::size_t& first,
                 std::size_t& last) const;

 private:
  static constexpr std::size_t most = 1024;
  using Bin = std::array<std::uint32_t, 4>;
  using Bins = std::array<Bin, most>;

  std::uint32_t binOf(std::uint32_t timestamp) const { return timestamp >> shift_; }
  std::size_t used() const { return std::size_t{binOf(time_.last)} - binOf(time_.first) + 1; }
  void makeRoomFor(const TimeSpan& time);
  void doubleWidth();

  unsigned shift_ = 0;
  TimeSpan time_;
  std::vector<Bins> groups_;  // the bin of number n is at n % most
};

}  // namespace mpuevent::tool

#endif
