#ifndef MPUEVENT_LOG_CHOOSING_MERGE_H
#define MPUEVENT_LOG_CHOOSING_MERGE_H

#include <cstddef>
#include <cstdint>
#include <deque>
#include <map>
#include <string_view>
#include <tuple>
#include <unordered_map>
#include <vector>

#include "log/choosing/KeptUnit.h"

namespace mpuevent::log {

/// Makes one story of the units of several files: by time, then enclosure, controller, log
/// instance and sequence id. A record that came already is left out. Units of one log, which is
/// one log instance of a controller in an enclosure, stay as they are in a file, whatever their
/// times: where times go backwards, what follows comes as soon as it can. Holds a copy of all.
class Merge {
 public:
  /// The units of a file come one after another, files by rising number.
  void add(const LogUnit& unit, std::size_t file, std::uint64_t index);

  /// The units in their order. Where files contradict each other the first one is right. They are
  /// valid as long as this is; nothing can be added afterwards.
  std::vector<const KeptUnit*> order();

 private:
  using LogName = std::tuple<std::string_view, std::string_view, std::uint32_t>;

  struct Node {
    KeptUnit unit;
    std::size_t lastFile;            // that had it
    std::vector<std::size_t> later;  // what follows it in its log, in any of the files
    std::size_t earlier = 0;         // how many times it is in a list of these
    bool ordered = false;
  };

  class FirstComesLast;

  void followLog(std::size_t place);

  std::deque<Node> nodes_;                                    // what points into a node stays valid
  std::unordered_map<std::string_view, std::size_t> places_;  // by the record's bytes
  std::map<LogName, std::size_t> ends_;                       // of the logs in the file
  std::size_t file_ = 0;
};

}  // namespace mpuevent::log

#endif
