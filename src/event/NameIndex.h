#ifndef EVENT_NAMEINDEX_H
#define EVENT_NAMEINDEX_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "event/TagFinder.h"

namespace mpuevent {

/// A stack of names that stand in a text, and where in the text they stand again.
///
/// All places of the text are sorted by what follows them. Those followed by a name are then one
/// run of places, and a tree over the sorted places tells in which names' runs one lies.
class NameIndex {
 public:
  /// For names of at most `longest` characters. The text must outlive the index.
  NameIndex(std::string_view text, std::size_t longest);

  void push(Range name);
  void pop();

  /// The lowest name of the stack that stands at `place`.
  std::optional<std::size_t> lowestAt(std::size_t place) const;

 private:
  static constexpr std::uint32_t none = 0xFFFFFFFF;

  void sortPlaces(std::size_t longest);
  std::size_t refineRanks(std::size_t length, std::vector<std::uint32_t>& spare);
  void mark(std::size_t node);

  std::string_view text_;
  std::vector<std::uint32_t> order_;  ///< the places, sorted
  std::vector<std::uint32_t> rank_;   ///< for each place: its number in that order, or of an equal
  /// Over the sorted places, node 1 at the top: the lowest name whose run covers all of a node.
  std::vector<std::uint32_t> tree_;
  std::vector<std::size_t> marked_;  ///< the nodes in the order they were set
  std::vector<std::size_t> begins_;  ///< for each name: how many nodes were set before
};

}  // namespace mpuevent

#endif
