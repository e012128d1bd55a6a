#include "log/choosing/Merge.h"

#include <memory>
#include <queue>
#include <span>
#include <utility>

#include "log/choosing/RecordBytes.h"

namespace mpuevent::log {

namespace {

std::string_view viewOf(std::span<const unsigned char> bytes) {
  return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

auto orderOf(const KeptUnit& unit) {
  const Record record = recordOf(unit.record());
  return std::tuple(record.timestamp(), record.enclosureSerialNumber(),
                    record.controllerSerialNumber(), record.logInstance(), record.sequenceId());
}

}  // namespace

/// For a queue that gives out the earliest unit first, of equals the one that came first.
class Merge::FirstComesLast {
 public:
  explicit FirstComesLast(const std::deque<Node>& nodes) : nodes_(&nodes) {}

  bool operator()(std::size_t a, std::size_t b) const {
    const auto orderA = orderOf((*nodes_)[a].unit);
    const auto orderB = orderOf((*nodes_)[b].unit);
    return orderA != orderB ? orderA > orderB : a > b;
  }

 private:
  const std::deque<Node>* nodes_;
};

void Merge::add(const LogUnit& unit, std::size_t file, std::uint64_t index) {
  if (file != file_) ends_.clear();
  file_ = file;
  const auto known = places_.find(viewOf(unit.record));
  if (known == places_.end()) {
    nodes_.push_back({KeptUnit(unit, file, index), file, {}});
    places_.emplace(viewOf(nodes_.back().unit.record()), nodes_.size() - 1);
    followLog(nodes_.size() - 1);
  } else if (Node& node = nodes_[known->second]; node.lastFile != file) {
    node.lastFile = file;
    followLog(known->second);
  }
}

// The unit comes after the one that came last of its log in this file.
void Merge::followLog(std::size_t place) {
  const Record record = recordOf(nodes_[place].unit.record());
  const auto [end, isFirst] = ends_.try_emplace(
      {record.enclosureSerialNumber(), record.controllerSerialNumber(), record.logInstance()},
      place);
  if (isFirst) return;
  nodes_[std::exchange(end->second, place)].later.push_back(place);
  ++nodes_[place].earlier;
}

std::vector<const KeptUnit*> Merge::order() {
  std::vector<const KeptUnit*> ordered;
  ordered.reserve(nodes_.size());
  std::priority_queue<std::size_t, std::vector<std::size_t>, FirstComesLast> ready(
      FirstComesLast{nodes_});
  for (std::size_t place = 0; place < nodes_.size(); ++place) {
    if (nodes_[place].earlier == 0) ready.push(place);
  }
  for (std::size_t first = 0; ordered.size() < nodes_.size();) {
    if (ready.empty()) {
      // Each that is left waits for another: files have them in different orders.
      while (nodes_[first].ordered) ++first;
      ready.push(first);
    }
    const std::size_t place = ready.top();
    ready.pop();
    Node& node = nodes_[place];
    if (std::exchange(node.ordered, true)) continue;
    ordered.push_back(&node.unit);
    for (const std::size_t later : node.later) {
      if (--nodes_[later].earlier == 0 && !nodes_[later].ordered) ready.push(later);
    }
  }
  return ordered;
}

}  // namespace mpuevent::log
