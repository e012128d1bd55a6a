#include "summary/TimeBins.h"

#include <algorithm>

namespace mpuevent::tool {

std::size_t TimeBins::addGroup() {
  groups_.emplace_back();
  return groups_.size() - 1;
}

void TimeBins::add(std::size_t group, Severity severity, std::uint32_t timestamp) {
  if (timestamp < time_.first || timestamp > time_.last) {
    TimeSpan time = time_;
    time.add(timestamp);
    makeRoomFor(time);
  }
  ++groups_[group][binOf(timestamp) % most][severity];
}

void TimeBins::makeRoomFor(const TimeSpan& time) {
  while ((time.last >> shift_) - (time.first >> shift_) >= most) doubleWidth();
  time_ = time;
}

void TimeBins::doubleWidth() {
  for (Bins& bins : groups_) {
    Bins wider{};
    if (time_.first <= time_.last) {
      for (std::uint64_t bin = binOf(time_.first); bin <= binOf(time_.last); ++bin) {
        for (std::size_t severity = 0; severity < bins[0].size(); ++severity) {
          wider[bin / 2 % most][severity] += bins[bin % most][severity];
        }
      }
    }
    bins = wider;
  }
  ++shift_;
}

TimeAxis TimeBins::axis(std::size_t mostColumns) const {
  TimeAxis axis;
  if (time_.first > time_.last) return axis;
  axis.begin = std::uint64_t{binOf(time_.first)} << shift_;
  axis.end = (std::uint64_t{binOf(time_.last)} + 1) << shift_;
  axis.columns = std::min(used(), mostColumns);
  return axis;
}

std::vector<TimeLanes::Column> TimeBins::columns(std::size_t group, std::size_t mostColumns) const {
  std::vector<TimeLanes::Column> columns(std::min(used(), mostColumns));
  for (std::size_t at = 0; at < used(); ++at) {
    const Bin& bin = groups_[group][(binOf(time_.first) + at) % most];
    SeverityCounts& to = columns[at * columns.size() / used()].events;
    for (std::size_t severity = 0; severity < bin.size(); ++severity) {
      to.of[severity] += bin[severity];
    }
  }
  return columns;
}

bool TimeBins::columnsOf(std::uint32_t from, std::uint32_t to, std::size_t count,
                         std::size_t& first, std::size_t& last) const {
  if (to < time_.first || from > time_.last) return false;
  const auto columnOf = [&](std::uint32_t timestamp) {
    const std::uint32_t time = std::clamp(timestamp, time_.first, time_.last);
    return std::size_t{binOf(time) - binOf(time_.first)} * count / used();
  };
  first = columnOf(from);
  last = columnOf(to);
  return true;
}

}  // namespace mpuevent::tool
